// The number at the end of a restore point, by which damage is found.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvane::keep {

// Of words of eight bytes, low byte first, the last one filled up with zeros. From 0xCBF29CE484222325 on, each word is
// put in by: exclusive or with the word; times 0x9E3779B97F4A7C15; exclusive or with itself shifted right by 32. Every
// step can be undone, so that bytes which differ within one word never have the same number.
[[nodiscard]] std::uint64_t checksumOf(std::string_view bytes);

}  // namespace korvane::keep
