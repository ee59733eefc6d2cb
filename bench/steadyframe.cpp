// One live frame for the steady agent in the program: while it is off, and while it works.
#include <benchmark/benchmark.h>

#include "CountedAllocations.h"
#include "ecu/VirtualEcu.h"
#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace {

using korvane::steady::State;

korvane::ecu::EcuSettings lap() {
    korvane::ecu::EcuSettings settings;
    static_cast<void>(korvane::ecu::parseKeyList(settings, "type=11,drive=lap"));
    return settings;
}

// Driven for so many seconds with the box ticked or not.
struct Rig {
    Rig(bool on, int seconds) {
        program.connect();
        program.pump.wait(2000);
        program.window.btnKartat.press();
        program.pump.wait(3000);
        const auto& places = program.tables.addresses;
        program.window.ecuEeprom.told(places.LOAD_MODE, 0);
        program.window.ecuEeprom.told(places.MAPGAIN_OFF, 10);
        program.window.ecuEeprom.told(places.MAPOFFSET_OFF, 0);
        auto& maps = dynamic_cast<korvane::maps::FrmMaps&>(*program.windows.loaded().back());
        maps.chkInjAnal.press();
        if (on) {
            maps.chkSteadyAgent.press();
        }
        program.pump.wait(seconds * 1000);
    }

    korvane::support::EcuDevice ecu{lap()};
    korvane::support::VirtualProgram program{&ecu};
};

void SteadyFrame(benchmark::State& state) {
    Rig rig(state.range(0) != 0, 500);
    auto& agent = rig.program.program.steadyAgent();
    if (state.range(0) != 0 && agent.agent().state() != State::Working) {
        state.SkipWithError("it does not work");
    }
    const auto before = allocations.load();
    for (auto _ : state) {
        agent.liveFrame();
    }
    state.counters["allocations/frame"] =
        static_cast<double>(allocations.load() - before) / static_cast<double>(state.iterations());
}

BENCHMARK(SteadyFrame)->Arg(0)->Arg(1)->Iterations(2000);

}  // namespace
