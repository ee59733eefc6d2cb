// From the last byte of a live frame arriving at a pseudo-terminal to the end of the painting of its number, on the
// display that QT_QPA_PLATFORM and DISPLAY name; offscreen without one.
#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <optional>

#include "WireRig.h"
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
    WireRig rig;
    auto& window = rig.program.frmSarn2();
    views::ViewHost host(rig.below.windows);
    host.setLink(window.linkState, [&rig] { rig.program.disconnect(); });
    views::addViews(host);
    rig.start();
    rig.pump.wait(2000);

    Painted painted(*host.viewOf(window)->findChild<QWidget*>(QStringLiteral("lblValue(0)")));
    std::vector<double> micros;
    for (int i = 0; i < kFrames; ++i) {
        rig.pump.wait(30);
        painted.seen.reset();
        micros.push_back(
            rig.device.measure(rig.pump, static_cast<std::uint8_t>(i % 250), [&] { return painted.seen; }));
    }
    tellFigure("wire to painted pixel", std::move(micros));
    rig.program.quit();
    return 0;
}
