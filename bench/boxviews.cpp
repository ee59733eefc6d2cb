// The windows of the ignition-only box and of the limiter box on the screen: opened, model made, loaded and its view
// built, and painted.
#include "Openings.h"

namespace {

using namespace korvane;  // NOLINT

constexpr int kBox = 32;  // firmware types
constexpr int kLimiter = 112;

void Open(benchmark::State& state) {
    WindowRig rig;
    rig.program.tables().SWType = static_cast<std::int32_t>(state.range(0));
    timeOpenings(state, rig, &live::FrmSarn2::btnKartat, "Combosensortype");
}

BENCHMARK(Open)->Arg(kBox)->Arg(kLimiter)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
