// One pass of the tuning agent over all cells: with nothing to do, and with samples that are not enough yet.
#include <benchmark/benchmark.h>

#include "analysis/clsInjAnalyser.h"
#include "support/VirtualProgram.h"

namespace {

using korvane::analysis::kAnalysedCells;

// What the tuner sees while nothing is to be corrected: the map window is open, the tables are filled.
struct Rig : korvane::support::VirtualProgram {
    explicit Rig(float samples) {
        window.btnKartat.press();
        auto& fuel = tables.FuelMapOut;
        for (std::size_t cell = 0; cell < fuel.size(); ++cell) {
            fuel.at(cell) = static_cast<std::uint8_t>(40 + cell / 16 * 6);
        }
        agent.setLogData(true);
        for (std::size_t cell = 0; cell < kAnalysedCells; ++cell) {
            for (float i = 0; i < samples; ++i) {
                agent.addValues(13.0F, static_cast<float>(cell), 3000.0F, 0.5F);
            }
        }
    }

    korvane::analysis::clsInjAnalyser& agent = program.analyser();
};

// state.range(0): samples in each cell, each half above its target; 41 would be enough for a step.
void AgentLook(benchmark::State& state) {
    Rig rig(static_cast<float>(state.range(0)));
    const auto before = rig.tables.FuelMapOut;
    for (auto _ : state) {
        rig.agent.CorrectAllCells();
        rig.agent.SmoothFuelMap();
        benchmark::DoNotOptimize(rig.agent.LastCount);
        benchmark::ClobberMemory();
    }
    if (rig.tables.FuelMapOut != before) {
        state.SkipWithError("the look changed the map");
    }
}

BENCHMARK(AgentLook)->Arg(0)->Arg(40);

}  // namespace

BENCHMARK_MAIN();
