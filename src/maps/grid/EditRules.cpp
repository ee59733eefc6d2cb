#include "maps/grid/EditRules.h"

#include <algorithm>
#include <utility>

#include "core/Numbers.h"

namespace korvane::maps {

namespace {

constexpr std::uint8_t kHighest = 255;
constexpr std::uint8_t kHighestPwmStep = 225;  // for single steps; on a block + goes to 255

// One more, stopping at `highest`; what is above it stays.
std::uint8_t raised(std::uint8_t byte, std::uint8_t highest) {
    return byte < highest ? static_cast<std::uint8_t>(byte + 1) : byte;
}

std::uint8_t raisedToTop(std::uint8_t byte) {
    return raised(byte, kHighest);
}

std::uint8_t restOf(double offset) {
    return core::toByte(std::clamp(kHighest - offset, 0.0, double{kHighest}));
}

}  // namespace

std::uint8_t raisedWithOffset(std::uint8_t byte, double offset) {
    return byte + offset >= kHighest ? restOf(offset) : raisedToTop(byte);
}

std::uint8_t steppedWithOffset(std::uint8_t byte, double offset) {
    return byte + offset == kHighest ? restOf(offset) : raisedToTop(byte);
}

GridRules fuelRules(CountOffset offset) {
    GridRules rules;
    rules.shape = BlockShape::Rectangle;
    rules.pointing = Pointing::KeysAndMouse;
    rules.blockUp = [offset](std::uint8_t byte) {
        const auto counts = offset();
        return counts ? raisedWithOffset(byte, *counts) : raisedToTop(byte);
    };
    rules.cellUp = [offset = std::move(offset)](std::uint8_t byte) {
        const auto counts = offset();
        return counts ? steppedWithOffset(byte, *counts) : raisedToTop(byte);
    };
    return rules;
}

GridRules ignitionRules(Pointing pointing) {
    GridRules rules;
    rules.pointing = pointing;
    rules.blockUp = &raisedToTop;
    rules.cellUp = &raisedToTop;
    return rules;
}

GridRules pwmRules() {
    GridRules rules = ignitionRules(Pointing::Keys);
    rules.cellUp = [](std::uint8_t byte) { return raised(byte, kHighestPwmStep); };
    return rules;
}

}  // namespace korvane::maps
