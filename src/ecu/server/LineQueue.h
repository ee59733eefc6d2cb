// The line from the ECU to the PC: bytes under way, each taking its time, some of them damaged.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ecu/engine/Micros.h"
#include "ecu/engine/Noise.h"

namespace korvane::ecu {

// Chances, 0 to 1, for each byte.
struct LineFaults {
    double lose = 0.0;  // its time passes, but it does not arrive
    double flip = 0.0;  // one of its bits arrives inverted
    double add = 0.0;   // a stray byte arrives before it
};

class LineQueue {
public:
    // Bytes under way at most; a frame that does not fit is not sent.
    static constexpr std::size_t kCapacity = 32768;

    explicit LineQueue(std::uint64_t seed) : noise_(seed) {}

    // For bytes that are sent from now on; ten bit times a byte.
    void setBaud(int baud);
    void setFaults(const LineFaults& faults) { faults_ = faults; }
    void reseed(std::uint64_t seed) { noise_ = Noise(seed); }

    // Sends `frame` once everything before it has been sent, but not before `earliest`.
    void send(std::span<const std::uint8_t> frame, Micros earliest);
    // How long a byte sent at `at` would have to wait for those before it; 0 on a free line.
    [[nodiscard]] Micros backlog(Micros at) const;
    // Microseconds that `bytes` bytes take.
    [[nodiscard]] Micros duration(std::size_t bytes) const;

    // When the next byte will have arrived in full.
    [[nodiscard]] std::optional<Micros> nextDue() const;
    // Appends what has arrived by `at` to `out`.
    void take(Micros at, std::vector<std::uint8_t>& out);
    // Drops what has not arrived by `at`, but for the byte that is on the line at that moment.
    void cut(Micros at);

private:
    using Nanos = std::int64_t;
    struct Transit {
        Nanos arrival;
        std::uint8_t byte;
    };

    void place(std::uint8_t byte, bool arrives);

    std::vector<Transit> transits_;
    std::size_t first_ = 0;  // of transits_ that has not been taken
    Nanos byteTime_ = 10'000'000'000 / 57600;
    Nanos free_ = INT64_MIN;  // when the last byte has been sent
    LineFaults faults_;
    Noise noise_;
};

}  // namespace korvane::ecu
