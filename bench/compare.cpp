// Comparing everything: two sides that differ in each cell and setting, and the open window that follows.
#include <benchmark/benchmark.h>

#include "keep/compare/Comparison.h"
#include "keep/compare/FrmCompare.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

Side full(std::uint8_t byte) {
    Side side;
    for (auto& map : side.maps) {
        map.size = 320;
        map.bytes.fill(byte);
    }
    side.eeprom.fill(byte);
    side.misc = MiscBytes{};
    return side;
}

void compareAll(benchmark::State& state) {
    support::VirtualProgram program;
    const Side left = full(3);
    const Side right = full(4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Comparison(left, right, program.tables, program.program.frmMisc().settings(), 0).all.settings.size());
    }
}
BENCHMARK(compareAll);

// All maps edited and all settings told; what the window does twice a second, on the page of a map or of the settings.
void followAll(benchmark::State& state) {
    support::VirtualProgram program;
    program.connect();
    program.tables.FuelMapOut.fill(7);
    for (int address = 0; address < 2999; ++address) {
        program.window.ecuEeprom.told(address, 9);
    }
    program.program.comparisons().open();
    auto& window = dynamic_cast<FrmCompare&>(*program.windows.loaded().back());
    window.chkAll.press();
    window.tabWhat.choose(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        window.Timer1.Tick();
    }
}
BENCHMARK(followAll)->ArgName("page")->Arg(1)->Arg(4);

void exportAll(benchmark::State& state) {
    support::VirtualProgram program;
    const Comparison comparison(full(3), full(4), program.tables, program.program.frmMisc().settings(), 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(linesOf(comparison, program.tables).size());
    }
}
BENCHMARK(exportAll);

}  // namespace
}  // namespace korvane::keep
