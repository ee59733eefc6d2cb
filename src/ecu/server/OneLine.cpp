#include "ecu/server/OneLine.h"

#include <cstddef>

namespace korvane::ecu {

namespace {

// How many bytes the control character takes with which `text` begins; 0 if it begins with another one.
std::size_t controlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F) {
        return 1;
    }
    const bool upperControl = text.size() > 1 && first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0 &&
                              static_cast<unsigned char>(text[1]) >= 0x80;
    if (upperControl) {
        return 2;
    }
    return text.starts_with("\u2028") || text.starts_with("\u2029") ? 3 : 0;
}

}  // namespace

std::string oneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const std::size_t control = controlLength(text);
        line += control == 0 ? text[0] : '?';
        text.remove_prefix(control == 0 ? 1 : control);
    }
    return line;
}

}  // namespace korvane::ecu
