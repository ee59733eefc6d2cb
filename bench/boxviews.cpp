// The windows of the ignition-only box and of the limiter box on the screen: opened, model made, loaded and its view
// built, and painted.
#include <QApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

constexpr int kBox = 32;  // firmware types
constexpr int kLimiter = 112;

void Open(benchmark::State& state) {
    WindowRig rig;
    rig.pump.wait(200);
    rig.program.tables().SWType = static_cast<std::int32_t>(state.range(0));
    std::vector<double> millis;
    for (auto _ : state) {
        const auto begin = Clock::now();
        rig.program.mapWindows().open();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        rig.program.mapWindows().unloadAll();
        rig.pump.wait(1);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
    state.counters["worst_ms"] = millis.back();
}

BENCHMARK(Open)->Arg(kBox)->Arg(kLimiter)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
