// From the last byte of a live frame arriving at a pseudo-terminal to the label's new text in the model.
#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "controls/Object.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "support/PropertyWatch.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;
using Clock = std::chrono::steady_clock;

constexpr int kFrames = 2000;

int openMaster() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        std::perror("pseudo-terminal");
        std::exit(1);
    }
    return master;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const int master = openMaster();
    support::VirtualMachine host;
    platform::QtPump pump;
    platform::QtSerialLine line(pump, platform::PortMap(pump, {{1, ptsname(master)}}));
    platform::Machine machine = host.with(pump, line);
    program::Program program(machine);
    program.start();
    program.connectTo(1);
    program.frmSarn2().TimerRequestData.Enabled = false;
    program.frmSarn2().TimerGetSettings.Enabled = false;

    auto& label = program.frmSarn2().lblValue(0);
    Clock::time_point seen;
    int changes = 0;
    const support::PropertyWatch watch(label, &label.Caption, [&] {
        seen = Clock::now();
        ++changes;
    });
    std::vector<double> micros;
    for (int i = 0; i < kFrames; ++i) {
        // The frame's last byte is written by a second thread while the program waits, as a device would.
        Clock::time_point sent;
        auto bytes = support::frame('R', support::Bytes(19, 1));
        bytes[3] = static_cast<std::uint8_t>(i % 250);
        const int before = changes;
        std::jthread device([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            sent = Clock::now();
            static_cast<void>(!write(master, bytes.data(), bytes.size()));
        });
        for (int waits = 0; changes == before && waits < 100; ++waits) {
            pump.wait(3);
        }
        device.join();
        micros.push_back(std::chrono::duration<double, std::micro>(seen - sent).count());
    }
    std::sort(micros.begin(), micros.end());
    std::printf(
        "frame at the pseudo-terminal to label in the model, %d frames: median %.0f us, 95th percentile %.0f us\n",
        kFrames, micros[kFrames / 2], micros[kFrames * 95 / 100]);
    program.quit();
    close(master);
    return 0;
}
