// Sends the edit of a single cell to the running engine at once. The ECU keeps it in its working memory only.
#pragma once

#include <cstdint>

#include "controls/Controls.h"
#include "controls/MSComm.h"

namespace korvane::maps {

class RealtimeChanges {
public:
    // `enabled` is the box that the tuner ticks.
    RealtimeChanges(const controls::CheckBox& enabled, controls::MSComm& port) : enabled_(enabled), port_(port) {}

    // Sends nothing while the box is unticked or the port closed, and nothing for a cell above 255, which the command
    // can't name: that one is sent with the whole map. True when the edit was sent.
    [[nodiscard]] bool send(std::uint8_t command, int cell, std::uint8_t value) const;

private:
    const controls::CheckBox& enabled_;
    controls::MSComm& port_;
};

}  // namespace korvane::maps
