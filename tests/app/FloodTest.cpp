// A device that sends without end and as fast as it can: the windows are still painted, and other events run.
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "app/RealProgram.h"
#include "ecu/server/Pty.h"

namespace korvane::app {
namespace {

using support::Bytes;
using support::frame;

// Sends the same bytes again and again, as fast as they are taken, while it exists.
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
        real_.program.connectTo(1);
        real_.program.frmSarn2().btnKartat.press();
        EXPECT_TRUE(real_.program.frmSarn2().MSComm1.PortOpen());
    }

    ecu::Pty pty_;
    RealProgram real_{1, pty_.slavePath()};
};

TEST_P(FloodedWindows, ArePaintedTenTimesASecond) {
    const Restless window;
    const auto begin = real_.pump.now();
    {
        const Flood flood(pty_, GetParam().second);
        real_.pump.wait(700);
    }
    const auto seconds = static_cast<double>(real_.pump.now() - begin) / 1e6;
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
