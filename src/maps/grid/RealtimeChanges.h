// Sends the edit of a single cell to the running engine at once. The ECU keeps it in its working memory only.
#pragma once

#include <cstdint>
#include <limits>

#include "controls/Controls.h"
#include "controls/MSComm.h"

namespace korvane::maps {

class RealtimeChanges {
public:
    // The last cell that the command can name.
    static constexpr int kLastCell = std::numeric_limits<std::uint8_t>::max();

    // `enabled` is the box that the tuner ticks.
    RealtimeChanges(const controls::CheckBox& enabled, controls::MSComm& port) : enabled_(enabled), port_(port) {}

    // Sends nothing while the box is unticked or the port closed, and nothing for a cell above kLastCell: that one is
    // sent with the whole map. True when the edit was sent.
    [[nodiscard]] bool send(std::uint8_t command, int cell, std::uint8_t value) const;

private:
    const controls::CheckBox& enabled_;
    controls::MSComm& port_;
};

}  // namespace korvane::maps
