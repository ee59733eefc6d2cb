// From the last byte of a live frame arriving at a pseudo-terminal to the label's new text in the model.
#include <QCoreApplication>

#include <optional>

#include "WireRig.h"
#include "support/PropertyWatch.h"

namespace {
constexpr int kFrames = 2000;
}

int main(int argc, char** argv) {
    using namespace korvane;  // NOLINT
    QCoreApplication application(argc, argv);
    WireRig rig;
    rig.start();

    auto& label = rig.program.frmSarn2().lblValue(0);
    std::optional<Clock::time_point> seen;
    const support::PropertyWatch watch(label, &label.Caption, [&] { seen = Clock::now(); });
    std::vector<double> micros;
    for (int i = 0; i < kFrames; ++i) {
        seen.reset();
        micros.push_back(rig.device.measure(rig.pump, static_cast<std::uint8_t>(i % 250), [&] { return seen; }));
    }
    tellFigure("wire to label", std::move(micros));
    rig.program.quit();
    return 0;
}
