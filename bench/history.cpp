// A step of whole maps in the history: noting it, undoing it, and the memory that ten thousand of them take.
// HistoryLimitsTest fails beyond the marks.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <malloc.h>
#include <memory>

#include "core/history/MapHistory.h"
#include "core/tables/MapImages.h"
#include "support/VirtualMachine.h"

namespace korvane::core {
namespace {

struct Rig {
    void fill(std::uint8_t byte, bool all) {
        tables.FuelMapOut.fill(byte);
        if (all) {
            tables.IgnMapOut.fill(byte);
            tables.PwmMapOut.fill(byte);
        }
    }
    // Another byte in every cell, as a script that tells nobody, or a read of a map, brings it.
    void step(bool all) {
        fill(++byte_, all);
        history.noted({Cause::Kind::Scaling});
    }

    support::VirtualMachine machine;
    MapImages tables;
    MapHistory history{tables, machine.pump};

private:
    std::uint8_t byte_ = 0;
};

void noteMaps(benchmark::State& state) {
    Rig rig;
    for (auto _ : state) {
        rig.step(state.range(0) != 0);
    }
}
BENCHMARK(noteMaps)->ArgName("allMaps")->Arg(0)->Arg(1)->Iterations(10'000);

void noteNothing(benchmark::State& state) {
    Rig rig;
    for (auto _ : state) {
        rig.history.look();
    }
}
BENCHMARK(noteNothing);

void undoAndRedoAllMaps(benchmark::State& state) {
    Rig rig;
    rig.step(true);
    for (auto _ : state) {
        benchmark::DoNotOptimize(rig.history.goTo(0));
        benchmark::DoNotOptimize(rig.history.goTo(1));
    }
}
BENCHMARK(undoAndRedoAllMaps);

void walkThroughTenThousand(benchmark::State& state) {
    Rig rig;
    for (int i = 0; i < 10'000; ++i) {
        rig.step(true);
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(rig.history.goTo(0));
        benchmark::DoNotOptimize(rig.history.goTo(10'000));
    }
}
BENCHMARK(walkThroughTenThousand)->Unit(benchmark::kMillisecond);

// A change behind an undo of so many steps: the undo becomes a step too.
void changeBehindUndo(benchmark::State& state) {
    const auto steps = static_cast<int>(state.range(0));
    std::unique_ptr<Rig> rig;
    for (auto _ : state) {
        state.PauseTiming();
        rig = std::make_unique<Rig>();
        for (int i = 0; i < steps; ++i) {
            rig->step(true);
        }
        static_cast<void>(rig->history.goTo(0));
        state.ResumeTiming();
        rig->step(true);
    }
}
BENCHMARK(changeBehindUndo)->ArgName("steps")->Arg(1)->Arg(10'001)->Iterations(20)->Unit(benchmark::kMicrosecond);

// The counters: steps that are kept, and megabytes on the heap.
void memory(benchmark::State& state) {
    for (auto _ : state) {
        const auto rig = std::make_unique<Rig>();
        const auto before = mallinfo2();
        for (int i = 0; i < 12'000; ++i) {
            rig->step(true);
        }
        const auto after = mallinfo2();
        state.counters["steps"] = static_cast<double>(rig->history.count());
        state.counters["MB"] =
            static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / 1e6;
    }
}
BENCHMARK(memory)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvane::core
