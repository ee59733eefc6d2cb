// A device that sends without end and without a limit: the windows go on painting, and others have their turn.
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ecu/server/Pty.h"
#include "platform/QueuedDialogs.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "platform/virtual/MemoryLog.h"
#include "platform/virtual/MemoryPreferences.h"
#include "program/Program.h"
#include "support/TempFolder.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"

namespace korvane::app {
namespace {

using support::Bytes;
using support::frame;

// Sends the same bytes again and again, as fast as they are taken, for as long as it lives.
class Flood {
public:
    Flood(const ecu::Pty& pty, Bytes bytes)
        : thread_([this, &pty, bytes] {
              while (!ended_) {
                  pty.write(bytes);
                  std::this_thread::yield();
              }
          }) {}
    Flood(const Flood&) = delete;
    Flood& operator=(const Flood&) = delete;
    ~Flood() {
        ended_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

// A window that asks for a new picture a hundred times a second.
class Restless : public QWidget {
public:
    Restless() {
        QObject::connect(&timer_, &QTimer::timeout, this, [this] { update(); });
        timer_.start(10);
        show();
    }

    int pictures = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++pictures; }

private:
    QTimer timer_;
};

class FloodedWindows : public testing::TestWithParam<std::pair<const char*, Bytes>> {
protected:
    FloodedWindows() {
        views::addViews(views_);
        program_.connection().loadSettings = [this] {
            program_.frmMisc().load();
            program_.frmMisc().TimerInitialGetData.Enabled = false;
        };
        program_.start();
        program_.connectTo(1);
        program_.frmSarn2().btnKartat.press();
        EXPECT_TRUE(program_.frmSarn2().MSComm1.PortOpen());
    }

    support::TempFolder folder_;
    ecu::Pty pty_;
    platform::QtPump pump_;
    platform::QtSerialLine line_{
        pump_, platform::PortMap(pump_, {{1, pty_.slavePath()}}, [] { return std::vector<platform::FoundPort>(); })};
    platform::QueuedDialogs dialogs_;
    platform::MemoryPreferences preferences_;
    platform::MemoryLog log_;
    controls::WindowList windows_;
    platform::Machine machine_{pump_, line_, dialogs_, preferences_, log_, windows_, folder_.path(), '.', {}};
    program::Program program_{machine_};
    views::ViewHost views_{windows_};
};

TEST_P(FloodedWindows, ArePaintedTenTimesASecond) {
    const Restless window;
    const auto begin = pump_.now();
    {
        const Flood flood(pty_, GetParam().second);
        pump_.wait(700);
    }
    const auto seconds = static_cast<double>(pump_.now() - begin) / 1e6;
    EXPECT_GE(window.pictures, 10 * seconds);
    EXPECT_LE(seconds, 5);
}

INSTANTIATE_TEST_SUITE_P(Of, FloodedWindows,
                         testing::Values(std::pair("identities", frame('y', {0, 1, 13, 58, 11})),
                                         std::pair("maps", frame('f', Bytes(160, 100))),
                                         std::pair("misc", frame('m', Bytes(9, 1))),
                                         std::pair("refusals", frame('F', {0}))),
                         [](const auto& each) { return std::string(each.param.first); });

}  // namespace
}  // namespace korvane::app
