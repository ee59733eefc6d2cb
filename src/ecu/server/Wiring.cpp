#include "ecu/server/Wiring.h"

#include <algorithm>

namespace korvane::ecu {

namespace {
constexpr Micros kSecond = 1'000'000;
}

void Wiring::setFaults(const WiringFaults& faults, Micros at) {
    const bool begins = faults.stray != faults_.stray;
    faults_ = faults;
    if (faults_.stray == 0) {
        stray_.reset();
    } else if (begins) {
        stray_ = at + interval();
    }
}

Micros Wiring::interval() const {
    return kSecond / faults_.stray;
}

std::uint8_t Wiring::read(std::uint8_t byte) {
    const bool differs = faults_.speed != 0 && faults_.speed != baud_;
    return differs ? anyByte() : byte;
}

void Wiring::readAll(std::span<std::uint8_t> bytes) {
    std::ranges::transform(bytes, bytes.begin(), [this](std::uint8_t byte) { return read(byte); });
}

std::optional<std::uint8_t> Wiring::takeStray(Micros at) {
    if (!stray_ || *stray_ > at) {
        return std::nullopt;
    }
    stray_ = std::max(*stray_, at - kSecond + interval()) + interval();
    return anyByte();
}

}  // namespace korvane::ecu
