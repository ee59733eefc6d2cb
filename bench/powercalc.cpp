// The tuning helper on the screen: from the press of its button to the painted window.
#include "Openings.h"

namespace {

using namespace korvane;  // NOLINT

void Open(benchmark::State& state) {
    WindowRig rig;
    timeOpenings(state, rig, &live::FrmSarn2::btnTuningHelp, "List1");
}

BENCHMARK(Open)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
