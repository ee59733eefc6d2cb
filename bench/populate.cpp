// A whole map drawn into its grid, without a display: time and allocations in the steady state.
#include <benchmark/benchmark.h>

#include "CountedAllocations.h"
#include "core/Checked.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "live/FrmSarn2.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "maps/MapForm.h"
#include "maps/grid/MapConversions.h"
#include "support/VirtualMachine.h"

namespace {

using namespace korvane;  // NOLINT

class NoAnalyser : public maps::Analyser {
public:
    void setMapWindow(maps::TunedMap*) override {}
    void Setpoint(float, std::int32_t) override {}
    [[nodiscard]] float Setpointget(std::int32_t) const override { return 0.0F; }
    [[nodiscard]] float Proposal(std::int32_t) const override { return 0.0F; }
    [[nodiscard]] float LambdaAvg(std::int32_t) const override { return 0.0F; }
    void setSimpleMode(bool) override {}
    void setLogData(bool) override {}
    void setAgentEnable(bool) override {}
    void ClearTables() override {}
};

class Grids : public maps::MapForm {
public:
    Grids(platform::Machine& machine, const maps::MapContext& context, maps::MapGeometry shape)
        : MapForm(
              machine, context,
              {{"frmMaps", ""}, shape, &maps::ordinaryInjectionScale, maps::Halves::One, maps::Pointing::Keys, ""}) {}

protected:
    void Form_Load() override {}
    void showAnalyserPane(bool) override {}
};

struct Rig {
    explicit Rig(maps::MapGeometry shape) : window(machine.machine, context, shape) {
        core::InitModule(tables, machine.preferences);
        core::InitTimeUnits(tables);
        core::checked(tables.EEParams, tables.addresses.INJ_MODE_OFFSET).value = std::uint8_t{2};
        window.txtMisc(2).Text = "12";
        window.show();
        for (int cell = 0; cell < shape.cells(); ++cell) {
            core::checked(tables.FuelMapOut, cell) = static_cast<std::uint8_t>(40 + cell * 7 % 200);
        }
    }

    support::VirtualMachine machine;
    core::SharedTables tables;
    live::FrmSarn2 main{machine.machine};
    NoAnalyser analyser;
    maps::Frm3Dmap frm3Dmap{machine.machine, tables};
    maps::FrmInjScale frmInjScale{machine.machine, tables};
    core::EepromAccess eeprom{main.MSComm1, machine.pump, tables};
    maps::MapContext context{tables, main, analyser, frm3Dmap, frmInjScale, eeprom};
    Grids window;
};

template <class Step>
void measure(benchmark::State& state, Step step) {
    step();
    const auto before = allocations.load();
    for (auto _ : state) {
        step();
    }
    state.counters["allocations/map"] =
        static_cast<double>(allocations.load() - before) / static_cast<double>(state.iterations());
}

// The edited fuel map as it is drawn after each step of a cell: one byte has changed.
void PopulateFuel(benchmark::State& state) {
    Rig rig(state.range(0) == 160 ? maps::kOrdinaryMaps : maps::kLargeMaps);
    measure(state, [&] {
        ++rig.tables.FuelMapOut[17];
        rig.window.populateFuelOUT();
    });
}

void PopulateIgnition(benchmark::State& state) {
    Rig rig(state.range(0) == 160 ? maps::kOrdinaryMaps : maps::kLargeMaps);
    measure(state, [&] {
        ++rig.tables.IgnMapOut[17];
        rig.window.populateIGNOUT();
    });
}

void PopulatePwm(benchmark::State& state) {
    Rig rig(state.range(0) == 160 ? maps::kOrdinaryMaps : maps::kLargeMaps);
    measure(state, [&] {
        ++rig.tables.PwmMapOut[17];
        rig.window.populatePWMOUT();
    });
}

BENCHMARK(PopulateFuel)->Arg(160)->Arg(320);
BENCHMARK(PopulateIgnition)->Arg(160)->Arg(320);
BENCHMARK(PopulatePwm)->Arg(160)->Arg(320);

}  // namespace

BENCHMARK_MAIN();
