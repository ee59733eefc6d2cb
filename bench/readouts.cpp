// Big readouts and the window to try the dial, from the press of the button to the painted window: model made, loaded,
// view built and shown.
#include "Openings.h"
#include "live/readout/FrmBigText.h"
#include "views/Events.h"

namespace {

using namespace korvane;  // NOLINT

constexpr int kLarge = 1366 * 15;  // twips

void OpenBigText(benchmark::State& state) {
    WindowRig rig;
    timeOpenings(state, rig, &live::FrmSarn2::Command6, "Label1");
}

void OpenMeter(benchmark::State& state) {
    WindowRig rig;
    timeOpenings(state, rig, &live::FrmSarn2::Command8, "SarnMeter1");
}

// From the tick that brings another value to the painted figures, in a window as wide as a display.
void AnotherValue(benchmark::State& state) {
    WindowRig rig;
    rig.program.frmSarn2().Command6.press();
    auto& readout = *rig.program.readoutWindows().bigTexts().all().front();
    readout.Timer1.Enabled = false;
    readout.resize(kLarge, kLarge);
    rig.pump.wait(500);
    std::vector<double> millis;
    const Paintings paintings("Label1");
    for (auto _ : state) {
        rig.program.tables().liveValues[0].value = static_cast<double>(1000 + millis.size());
        const auto begin = Clock::now();
        readout.Timer1.Tick();
        rig.host.clock().tick();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis, paintings);
}

BENCHMARK(OpenBigText)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenMeter)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AnotherValue)->Iterations(500)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
