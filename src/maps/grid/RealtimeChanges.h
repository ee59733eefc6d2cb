// Sends the edit of a single cell to the running engine at once. It lives in the ECU's working memory only.
//
//     command  cell  cell  value  value  ~command
#pragma once

#include <array>
#include <cstdint>

#include "controls/Controls.h"
#include "controls/MSComm.h"

namespace korvane::maps {

// Cell and value go twice, so that the ECU can check them.
[[nodiscard]] constexpr std::array<std::uint8_t, 6> cellFrame(std::uint8_t command, std::uint8_t cell,
                                                              std::uint8_t value) {
    return {command, cell, cell, value, value, static_cast<std::uint8_t>(~command & 0xFF)};
}

class RealtimeChanges {
public:
    // `enabled` is the box that the tuner ticks.
    RealtimeChanges(const controls::CheckBox& enabled, controls::MSComm& port) : enabled_(enabled), port_(port) {}

    // Sends nothing while the box is unticked or the port closed, and nothing for a cell past 255, which the frame
    // can't name: that one goes out with the whole map.
    void send(std::uint8_t command, int cell, std::uint8_t value) const;

private:
    const controls::CheckBox& enabled_;
    controls::MSComm& port_;
};

}  // namespace korvane::maps
