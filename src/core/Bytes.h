// How numbers go over the line: the bytes of a word, and the complement that ends a command or frame.
#pragma once

#include <cstdint>

namespace korvane::core {

// Of the 16 lowest bits; a negative number is its two's complement.
[[nodiscard]] constexpr std::uint8_t lowByte(std::int32_t word) {
    return static_cast<std::uint8_t>(static_cast<std::uint32_t>(word) & 0xFFU);
}

[[nodiscard]] constexpr std::uint8_t highByte(std::int32_t word) {
    return static_cast<std::uint8_t>((static_cast<std::uint32_t>(word) >> 8U) & 0xFFU);
}

// Every bit turned over.
[[nodiscard]] constexpr std::uint8_t complement(std::uint8_t byte) {
    return static_cast<std::uint8_t>(~byte & 0xFF);
}

}  // namespace korvane::core
