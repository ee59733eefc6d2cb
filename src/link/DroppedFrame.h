// A frame whose complement was wrong, and the line that the debug log has of it.
#pragma once

#include <cstdint>
#include <string>

namespace korvane::link {

struct DroppedFrame {
    std::uint8_t code;
    std::int32_t length;  // of the payload, as the frame said
    std::uint8_t complement;
};

// "dropped a frame 'R' of length 13: complement AC instead of AD". A code that is no ASCII character is in hex.
[[nodiscard]] std::string textOf(const DroppedFrame& frame);

}  // namespace korvane::link
