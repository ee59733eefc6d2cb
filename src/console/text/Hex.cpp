#include "console/text/Hex.h"

#include <charconv>

#include "console/ConsoleError.h"

namespace korvane::console {

std::string hexText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const auto byte : bytes) {
        out += kDigits[byte >> 4U];
        out += kDigits[byte & 0xFU];
    }
    return out;
}

std::vector<std::uint8_t> bytesFromHex(std::string_view digits) {
    if (digits.size() % 2 != 0) {
        throw ConsoleError("each byte needs two hex digits");
    }
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto pair = digits.substr(2 * i, 2);
        const auto result = std::from_chars(pair.data(), pair.data() + pair.size(), bytes[i], 16);
        if (result.ptr != pair.data() + pair.size()) {
            throw ConsoleError(shown(pair) + " is no byte in hex digits");
        }
    }
    return bytes;
}

}  // namespace korvane::console
