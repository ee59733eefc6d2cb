#include "console/Utf8.h"

#include "core/TextEncoding.h"

namespace korvane::console {

namespace {

std::size_t lengthByLeadByte(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xE0) {
        return 2;
    }
    return lead < 0xF0 ? 3 : 4;
}

constexpr char32_t kPayloadBits = 0x3F;  // of a continuation byte

}  // namespace

std::size_t characterLength(std::string_view text, std::size_t position) {
    if (position >= text.size()) {
        return 0;
    }
    const auto length = lengthByLeadByte(static_cast<unsigned char>(text[position]));
    const auto character = text.substr(position, length);
    return character.size() == length && core::isUtf8(character) ? length : 0;
}

std::size_t plainLength(std::string_view text, std::size_t position) {
    std::size_t end = position;
    while (end < text.size() && text[end] >= ' ' && text[end] < '\x7F' && text[end] != '"' && text[end] != '\\') {
        ++end;
    }
    return end - position;
}

char32_t codePointOf(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (bytes.size() == 1) {
        return lead;
    }
    char32_t codePoint = lead & (0x7FU >> bytes.size());
    for (const char byte : bytes.substr(1)) {
        codePoint = (codePoint << 6U) | (static_cast<unsigned char>(byte) & kPayloadBits);
    }
    return codePoint;
}

void appendCodePoint(std::string& out, char32_t codePoint) {
    const auto append = [&](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
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

}  // namespace korvane::console
