// What is wrong with the cable between the PC and the ECU.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "ecu/engine/Micros.h"
#include "ecu/engine/Noise.h"

namespace korvane::ecu {

struct WiringFaults {
    int speed = 0;      // the baud rate at which the ECU speaks and hears; 0: that of the PC
    bool echo = false;  // the wires of both directions touch: the PC hears itself, and the ECU nothing
    int stray = 0;      // bytes a second that the PC hears and nobody sent
};

class Wiring {
public:
    explicit Wiring(std::uint64_t seed) : noise_(seed) {}

    void reseed(std::uint64_t seed) { noise_ = Noise(seed); }
    void setBaud(int baud) { baud_ = baud; }
    // The first stray byte comes one interval after `at`.
    void setFaults(const WiringFaults& faults, Micros at);

    [[nodiscard]] bool isEcho() const { return faults_.echo; }
    // The byte as the other side reads it: any byte at all where the speeds differ.
    [[nodiscard]] std::uint8_t read(std::uint8_t byte);
    void readAll(std::span<std::uint8_t> bytes);

    // When the next stray byte has arrived.
    [[nodiscard]] std::optional<Micros> nextStray() const { return stray_; }
    // The stray byte that has arrived by `at`, if there is one. At most a second of them is made up for.
    [[nodiscard]] std::optional<std::uint8_t> takeStray(Micros at);

private:
    [[nodiscard]] std::uint8_t anyByte() { return static_cast<std::uint8_t>(noise_.next() >> 56U); }
    [[nodiscard]] Micros interval() const;

    WiringFaults faults_;
    Noise noise_;
    int baud_ = 57600;
    std::optional<Micros> stray_;
};

}  // namespace korvane::ecu
