// A live frame that arrives at a pseudo-terminal, and how long the program takes for it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/EventPump.h"
#include "support/VirtualMachine.h"

namespace korvane {

using Clock = std::chrono::steady_clock;

// The end of the terminal at which the ECU would be.
class PtyFrames {
public:
    PtyFrames() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
            std::perror("pseudo-terminal");
            std::exit(1);
        }
    }
    PtyFrames(const PtyFrames&) = delete;
    PtyFrames& operator=(const PtyFrames&) = delete;
    ~PtyFrames() { close(master_); }

    [[nodiscard]] const char* device() const { return ptsname(master_); }

    // Microseconds from a frame's last byte to `done`, which gives the moment at which the program was through with it,
    // or nothing yet. The byte is written by a second thread while the program waits, as a device would.
    template <class Done>
    double measure(platform::EventPump& pump, std::uint8_t value, Done done) {
        Clock::time_point sent;
        auto bytes = support::frame('R', support::Bytes(19, 1));
        bytes[3] = value;
        std::jthread device([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            sent = Clock::now();
            static_cast<void>(!write(master_, bytes.data(), bytes.size()));
        });
        for (int waits = 0; !done() && waits < 100; ++waits) {
            pump.wait(3);
        }
        device.join();
        return std::chrono::duration<double, std::micro>(*done() - sent).count();
    }

private:
    int master_;
};

// "figure,NAME,us,MIN,MEDIAN,P95,P99,MAX", one line for a script.
inline void tellFigure(std::string_view name, std::vector<double> micros) {
    std::sort(micros.begin(), micros.end());
    const auto part = [&](std::size_t percent) {
        return micros[std::min(micros.size() * percent / 100, micros.size() - 1)];
    };
    std::printf("figure,%.*s,us,%.0f,%.0f,%.0f,%.0f,%.0f\n", static_cast<int>(name.size()), name.data(), part(0),
                part(50), part(95), part(99), part(100));
}

}  // namespace korvane
