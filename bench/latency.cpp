// From the last byte of a live frame arriving at a pseudo-terminal to the label's new text in the model.
#include <QCoreApplication>

#include <optional>

#include "PtyFrames.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "support/PropertyWatch.h"
#include "support/VirtualProgram.h"

namespace {
constexpr int kFrames = 2000;
}

int main(int argc, char** argv) {
    using namespace korvane;  // NOLINT
    QCoreApplication application(argc, argv);
    PtyFrames device;
    support::VirtualMachine host;
    platform::QtPump pump;
    platform::QtSerialLine line(pump, platform::PortMap(pump, {{1, device.device()}}));
    platform::Machine machine = host.with(pump, line);
    program::Program program(machine);
    program.start();
    program.connectTo(1);
    program.frmSarn2().TimerRequestData.Enabled = false;
    program.frmSarn2().TimerGetSettings.Enabled = false;

    auto& label = program.frmSarn2().lblValue(0);
    std::optional<Clock::time_point> seen;
    const support::PropertyWatch watch(label, &label.Caption, [&] { seen = Clock::now(); });
    std::vector<double> micros;
    for (int i = 0; i < kFrames; ++i) {
        seen.reset();
        micros.push_back(device.measure(pump, static_cast<std::uint8_t>(i % 250), [&] { return seen; }));
    }
    tellFigure("wire to label", std::move(micros));
    program.quit();
    return 0;
}
