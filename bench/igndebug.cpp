// The ignition debug window on the screen: from the press of its button to the painted window; and one frame of its
// poll, shown, pushed to both trends and drawn, without what the toolkit paints of it.
#include "Openings.h"

namespace {

using namespace korvane;  // NOLINT

void Open(benchmark::State& state) {
    WindowRig rig;
    timeOpenings(state, rig, &live::FrmSarn2::Command5, "lblIgnDeb");
}

// Both patterns in turn, so that the trends fill with lines from top to bottom.
void Frame(benchmark::State& state) {
    support::VirtualProgram program;
    program.window.Command5.press();
    auto& debug = *program.program.windows().frmIGNDebug;
    const support::Bytes frames[] = {{0x55, 0x55, 0xD0, 0x02, 0x55, 0x55, 0x3C, 0x00},
                                     {0xAA, 0xAA, 0xD0, 0x02, 0xAA, 0xAA, 0x3C, 0x00}};
    std::size_t turn = 0;
    for (auto _ : state) {
        debug.showDebugFrame(frames[turn++ % 2]);
    }
}

BENCHMARK(Open)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Frame)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
