// Bytes as hex digits.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::console {

// Two lower-case digits for each byte, nothing between them.
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);

// Either case. Raises ConsoleError for what is no even number of hex digits.
[[nodiscard]] std::vector<std::uint8_t> bytesFromHex(std::string_view digits);

}  // namespace korvane::console
