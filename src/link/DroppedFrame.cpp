#include "link/DroppedFrame.h"

#include <string_view>

#include "link/Commands.h"

namespace korvane::link {

namespace {

constexpr std::uint8_t kFirstVisible = '!';
constexpr std::uint8_t kLastVisible = '~';

std::string hex(std::uint8_t byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return {kDigits[byte / 16U], kDigits[byte % 16U]};
}

std::string nameOf(std::uint8_t code) {
    const bool visible = code >= kFirstVisible && code <= kLastVisible;
    return visible ? std::string("'") + static_cast<char>(code) + '\'' : hex(code);
}

}  // namespace

std::string textOf(const DroppedFrame& frame) {
    return "dropped a frame " + nameOf(frame.code) + " of length " + std::to_string(frame.length) + ": complement " +
           hex(frame.complement) + " instead of " + hex(complement(frame.code));
}

}  // namespace korvane::link
