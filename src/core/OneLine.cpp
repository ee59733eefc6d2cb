#include "core/OneLine.h"

#include <algorithm>

#include "core/TextEncoding.h"

namespace korvane::core {

namespace {

bool breaksLine(std::string_view character) {
    constexpr char32_t kFirstPrinted = 0x20;
    constexpr char32_t kDelete = 0x7F;
    constexpr char32_t kLastControl = 0x9F;
    constexpr char32_t kLineSeparator = 0x2028;
    constexpr char32_t kParagraphSeparator = 0x2029;
    const char32_t code = codePointOf(character);
    return code < kFirstPrinted || (code >= kDelete && code <= kLastControl) || code == kLineSeparator ||
           code == kParagraphSeparator;
}

}  // namespace

std::string onOneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const std::size_t size = characterSize(text);
        const std::string_view character = text.substr(0, std::max(size, std::size_t{1}));
        line += size == 0 || breaksLine(character) ? "?" : character;
        text.remove_prefix(character.size());
    }
    return line;
}

}  // namespace korvane::core
