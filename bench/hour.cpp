// An hour of 10 ms polling in virtual time, with the virtual ECU at the other end of the line.
#include <benchmark/benchmark.h>

#include "ecu/VirtualEcu.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

class Device : public platform::LineDevice {
public:
    void setBaud(int baud) override { ecu_.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { ecu_.receive(byte, at); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu_.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override { ecu_.take(at, out); }

private:
    ecu::VirtualEcu ecu_;
};

void HourOfPolling(benchmark::State& state) {
    for (auto _ : state) {
        Device device;
        support::VirtualProgram rig(&device);
        rig.connect();
        rig.pump.wait(3600 * 1000);
        state.counters["bytes received"] = rig.window.bytesReceived;
    }
}

BENCHMARK(HourOfPolling)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();
