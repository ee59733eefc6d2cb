// A full read of the settings in virtual time, with the virtual ECU at the other end of the line. It is to take under
// 50 ms of real time.
#include <benchmark/benchmark.h>

#include "program/Program.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

void FullReadOfTheSettings(benchmark::State& state) {
    support::EcuDevice device;
    support::VirtualMachine host(&device);
    program::Program program(host.machine);
    program.start();
    program.connectTo(1);
    host.pump.wait(1000);  // with the window's own first read
    const auto began = host.pump.now();
    for (auto _ : state) {
        program.frmMisc().btnLoad.press();
    }
    state.counters["virtual s a read"] =
        benchmark::Counter(static_cast<double>(host.pump.now() - began) / 1e6, benchmark::Counter::kAvgIterations);
    if (program.frmMisc().txtAccel(9).Text.get() != "0.1111") {
        state.SkipWithError("the last cell has not been read");
    }
}

BENCHMARK(FullReadOfTheSettings)->Unit(benchmark::kMillisecond)->Iterations(20)->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();
