// From the last byte of a live frame arriving at a pseudo-terminal to the end of the painting of its number, on the
// display that QT_QPA_PLATFORM and DISPLAY name; offscreen without one.
#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <optional>

#include "PtyFrames.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "program/Program.h"
#include "support/VirtualMachine.h"
#include "views/Views.h"

namespace {

using namespace korvane;  // NOLINT

constexpr int kFrames = 600;

// Notes when the events behind a painting have been handled.
class Painted : public QObject {
public:
    explicit Painted(QWidget& widget) { widget.installEventFilter(this); }

    std::optional<Clock::time_point> seen;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, this, [this] { seen = Clock::now(); });
        }
        return false;
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    PtyFrames device;
    support::VirtualMachine below;
    platform::QtPump pump;
    platform::QtSerialLine line(pump, platform::PortMap(pump, {{1, device.device()}}));
    platform::Machine machine = below.with(pump, line);
    program::Program program(machine);
    views::ViewHost host(below.windows);
    host.setLink(program.frmSarn2().linkState, [&program] { program.disconnect(); });
    views::addViews(host);
    program.start();
    program.connectTo(1);
    program.frmSarn2().TimerRequestData.Enabled = false;
    program.frmSarn2().TimerGetSettings.Enabled = false;
    pump.wait(2000);

    Painted painted(*host.viewOf(program.frmSarn2())->findChild<QWidget*>(QStringLiteral("lblValue(0)")));
    std::vector<double> micros;
    for (int i = 0; i < kFrames; ++i) {
        pump.wait(30);
        painted.seen.reset();
        micros.push_back(device.measure(pump, static_cast<std::uint8_t>(i % 250), [&] { return painted.seen; }));
    }
    tellFigure("wire to painted pixel", std::move(micros));
    program.quit();
    return 0;
}
