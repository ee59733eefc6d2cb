#include "app/RealRun.h"

#include "app/CommandInput.h"
#include "app/FirstPaint.h"
#include "app/Session.h"
#include "platform/DebugLog.h"
#include "platform/qt/QtDialogs.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "views/ViewHost.h"

#include <QApplication>
#include <QCoreApplication>
#include <QScreen>

#include <memory>
#include <string>

namespace korvane::app {

namespace {

constexpr int kTwipsPerPixel = 15;

// Passes the windows' coming and going on to their views, and ends the event loop with the main window.
class EndOfProgram : public platform::WindowListener {
public:
    EndOfProgram(platform::Window& mainWindow, platform::WindowListener* views) : main_(mainWindow), views_(views) {}

    void windowLoaded(platform::Window& window) override {
        if (views_ != nullptr) {
            views_->windowLoaded(window);
        }
    }

    void windowUnloaded(platform::Window& window) override {
        if (views_ != nullptr) {
            views_->windowUnloaded(window);
        }
        if (&window == &main_) {
            QCoreApplication::quit();
        }
    }

private:
    platform::Window& main_;
    platform::WindowListener* views_;
};

class ViewScreenshots : public console::Screenshots {
public:
    explicit ViewScreenshots(views::ViewHost& views) : views_(views) {}

    [[nodiscard]] std::string take(platform::Window& window, const std::filesystem::path& file) override {
        return views_.screenshot(window, file);
    }

private:
    views::ViewHost& views_;
};

int run(const Options& options, Surroundings surroundings, platform::WindowListener* views) {
    surroundings.makeRealLine = [&](platform::PreferencesStore& preferences) {
        return std::make_unique<platform::QtSerialLine>(
            surroundings.pump, platform::PortMap(surroundings.pump, platform::fixedPorts(preferences, options.ports)));
    };
    Session session(options, surroundings);
    EndOfProgram end(session.program().frmSarn2(), views);
    session.windows().setListener(&end);
    const auto firstPaint = views != nullptr ? std::make_unique<FirstPaint>(session.log()) : nullptr;
    session.start();
    if (options.connect) {
        session.program().connectTo(*options.connect);
    }
    const CommandInput input(session, options);
    QCoreApplication::exec();
    session.windows().setListener(nullptr);
    return reportEnd(session);
}

}  // namespace

int runWithDisplay(const Options& options, int& argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("korvane-tuner");
    QApplication::setApplicationDisplayName("Korvane Tuner");
    QApplication::setDesktopFileName("korvane-tuner");
    QApplication::setQuitOnLastWindowClosed(false);
    platform::QtPump pump;
    platform::QtDialogs dialogs(pump);
    views::ViewHost views;
    ViewScreenshots screenshots(views);
    const QSize pixels = QApplication::primaryScreen()->size();
    return run(options,
               {pump, {}, &dialogs, &screenshots,
                platform::Screen{pixels.width() * kTwipsPerPixel, pixels.height() * kTwipsPerPixel}},
               &views);
}

int runHeadless(const Options& options, int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    platform::QtPump pump;
    return run(options, {pump, {}, nullptr, nullptr, {}}, nullptr);
}

}  // namespace korvane::app
