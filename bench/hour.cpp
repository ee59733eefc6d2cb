// An hour of 10 ms polling in virtual time, with the virtual ECU at the other end of the line.
#include <benchmark/benchmark.h>

#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

void HourOfPolling(benchmark::State& state) {
    for (auto _ : state) {
        support::EcuDevice device;
        support::VirtualProgram rig(&device);
        rig.connect();
        rig.pump.wait(3600 * 1000);
        state.counters["bytes received"] = rig.window.bytesReceived;
    }
}

BENCHMARK(HourOfPolling)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();
