#include "core/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace korvane::core {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Windows-1252 differs from Unicode's first 256 characters in these, 0x80 to 0x9F.
constexpr std::array<std::uint16_t, 32> kWindowsCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::uint8_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

bool isBetween(std::uint8_t byte, std::uint8_t low, std::uint8_t high) {
    return byte >= low && byte <= high;
}

// What the first byte of a character says: how many follow, and the range of the first of those.
struct Lead {
    std::size_t following;
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xBF;
};

constexpr std::size_t kNoLead = 4;
constexpr char32_t kPayloadBits = 0x3F;  // of a byte that follows

Lead leadOf(std::uint8_t byte) {
    if (byte < 0x80) {
        return {0};
    }
    if (isBetween(byte, 0xC2, 0xDF)) {
        return {1};
    }
    if (isBetween(byte, 0xE0, 0xEF)) {
        return {2, static_cast<std::uint8_t>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<std::uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (isBetween(byte, 0xF0, 0xF4)) {
        return {3, static_cast<std::uint8_t>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<std::uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {kNoLead};
}

}  // namespace

std::size_t characterSize(std::string_view bytes) {
    if (bytes.empty()) {
        return 0;
    }
    const Lead lead = leadOf(byteAt(bytes, 0));
    if (lead.following == kNoLead || lead.following >= bytes.size()) {
        return 0;
    }
    for (std::size_t i = 1; i <= lead.following; ++i) {
        const bool first = i == 1;
        if (!isBetween(byteAt(bytes, i), first ? lead.low : 0x80, first ? lead.high : 0xBF)) {
            return 0;
        }
    }
    return lead.following + 1;
}

char32_t codePointOf(std::string_view bytes) {
    const std::uint8_t lead = byteAt(bytes, 0);
    if (bytes.size() == 1) {
        return lead;
    }
    char32_t codePoint = lead & (0x7FU >> bytes.size());
    for (const char byte : bytes.substr(1)) {
        codePoint = (codePoint << 6U) | (static_cast<unsigned char>(byte) & kPayloadBits);
    }
    return codePoint;
}

void appendCodePoint(std::string& text, char32_t codePoint) {
    const auto append = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6U));
    } else if (codePoint < 0x10000) {
        append(0xE0 | (codePoint >> 12U));
        append(0x80 | ((codePoint >> 6U) & kPayloadBits));
    } else {
        append(0xF0 | (codePoint >> 18U));
        append(0x80 | ((codePoint >> 12U) & kPayloadBits));
        append(0x80 | ((codePoint >> 6U) & kPayloadBits));
    }
    append(0x80 | (codePoint & kPayloadBits));
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t size = characterSize(bytes);
        if (size == 0) {
            return false;
        }
        bytes.remove_prefix(size);
    }
    return true;
}

std::string fromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t byte = byteAt(bytes, i);
        appendCodePoint(text, isBetween(byte, 0x80, 0x9F) ? kWindowsCharacters.at(byte - 0x80U) : byte);
    }
    return text;
}

std::string decode(std::string_view bytes) {
    if (!isUtf8(bytes)) {
        return fromWindows1252(bytes);
    }
    // With one left, what is written back would begin with it.
    while (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    return std::string(bytes);
}

}  // namespace korvane::core
