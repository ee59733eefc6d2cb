#include "maps/grid/RealtimeChanges.h"

#include <limits>

namespace korvane::maps {

void RealtimeChanges::send(std::uint8_t command, int cell, std::uint8_t value) const {
    constexpr int kLastCell = std::numeric_limits<std::uint8_t>::max();
    if (enabled_.Value != 1 || !port_.PortOpen() || cell > kLastCell) {
        return;
    }
    port_.Output(cellFrame(command, static_cast<std::uint8_t>(cell), value));
}

}  // namespace korvane::maps
