// The misc block as its boxes show it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "link/EcuMisc.h"

namespace korvane::maps {

inline constexpr int kMiscBits = 16;  // of the enable word

// From this bit on the ECU's enable word is inverted: a set bit is a box without its tick.
inline constexpr int kFirstInvertedBit = 14;

[[nodiscard]] constexpr bool isTicked(std::int32_t word, int bit) {
    return ((word & (1 << bit)) != 0) != (bit >= kFirstInvertedBit);
}

inline constexpr std::uint8_t kOpen4ms4 = 6;  // codes of the injector's longest opening
inline constexpr std::uint8_t kOpen2ms2 = 5;

// The counts behind the boxes of numbers, in their order; the enable word; the code of the opening.
struct MiscValues {
    std::array<std::int32_t, 4> numbers{};
    std::int32_t enabled = 0;
    std::uint8_t opening = 0;
};

[[nodiscard]] constexpr MiscValues valuesOf(const link::MiscBytes& bytes) {
    const auto word = [&](std::size_t low) { return bytes[low] + 256 * bytes[low + 1]; };
    return {{static_cast<std::int16_t>(word(0)), static_cast<std::int16_t>(word(2)), bytes[6], bytes[7]},
            word(4),
            bytes[8]};
}

}  // namespace korvane::maps
