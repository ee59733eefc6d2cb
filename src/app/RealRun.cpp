#include "app/RealRun.h"

#include <QApplication>
#include <QCoreApplication>
#include <QScreen>

#include <memory>
#include <string>

#include "app/CommandInput.h"
#include "app/FirstPaint.h"
#include "app/Session.h"
#include "controls/PlaceMemory.h"
#include "platform/qt/DiskFlush.h"
#include "platform/qt/QtDialogs.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "views/Views.h"
#include "views/frame/Desk.h"

namespace korvane::app {

namespace {

constexpr int kTwipsPerPixel = 15;

// The views come after the session, whose windows they show; its console asks for pictures of them.
class ViewScreenshots : public console::Screenshots {
public:
    void setViews(const views::ViewHost* views) { views_ = views; }

    [[nodiscard]] std::string take(controls::Window& window, const std::filesystem::path& file) override {
        return views_ != nullptr ? views_->screenshot(window, file) : "There is no display.";
    }

private:
    const views::ViewHost* views_ = nullptr;
};

Surroundings withRealLine(Surroundings surroundings, const Options& options) {
    surroundings.makeRealLine = [&pump = surroundings.pump, ports = options.ports](auto& preferences) {
        return std::make_unique<platform::QtSerialLine>(
            pump, platform::PortMap(pump, platform::fixedPorts(preferences, ports)));
    };
    surroundings.toDisk = platform::flushToDisk;
    return surroundings;
}

// Without a user a message box would stay open for ever: with a script that runs to its end, or a display that shows
// nothing.
bool isSeen() {
    return QGuiApplication::platformName() != "offscreen";
}

bool somebodyLooks(const Options& options) {
    return !options.script && isSeen();
}

int runUntilEnded(Session& session, platform::EventPump& pump, const Options& options) {
    session.program().Ended = [] { QCoreApplication::quit(); };
    session.start();
    const CommandInput input(session, pump, options);
    // A strict run may have ended at the start.
    if (!session.program().ended()) {
        QCoreApplication::exec();
    }
    session.commands().endOfProgram();
    return reportEnd(session);
}

}  // namespace

int runWithDisplay(const Options& options, int& argc, char** argv) {
    using Questions = platform::QtDialogs::Questions;
    CommandInput::blockEndSignals();
    QApplication application(argc, argv);
    QApplication::setApplicationName("korvane-tuner");
    QApplication::setDesktopFileName("korvane-tuner");
    QApplication::setQuitOnLastWindowClosed(false);
    platform::QtPump pump;
    platform::QtDialogs dialogs(pump, options.console ? Questions::LeftOut : Questions::Asked);
    ViewScreenshots screenshots;
    const QSize pixels = QApplication::primaryScreen()->size();
    const platform::Screen screen{pixels.width() * kTwipsPerPixel, pixels.height() * kTwipsPerPixel};
    platform::Dialogs* const shown = somebodyLooks(options) ? &dialogs : nullptr;
    Session session(options, withRealLine({pump, {}, shown, &screenshots, screen, {}}, options));
    controls::PlaceMemory places(session.preferences());
    const views::Desk desk(remembersWindows(options) ? &places : nullptr);
    views::ViewHost views(session.windows());
    if (isSeen()) {
        views.setDesk(&desk);
    }
    auto& program = session.program();
    views.setLink(program.frmSarn2().linkState, [&program] { program.disconnect(); });
    views::addViews(views);
    screenshots.setViews(&views);
    const FirstPaint firstPaint(session.log());
    return runUntilEnded(session, pump, options);
}

int runHeadless(const Options& options, int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    platform::QtPump pump;
    Session session(options, withRealLine({pump, {}, nullptr, nullptr, {}, {}}, options));
    return runUntilEnded(session, pump, options);
}

}  // namespace korvane::app
