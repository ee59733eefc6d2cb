#include "maps/grid/RealtimeChanges.h"

#include <limits>

#include "link/Commands.h"

namespace korvane::maps {

bool RealtimeChanges::send(std::uint8_t command, int cell, std::uint8_t value) const {
    constexpr int kLastCell = std::numeric_limits<std::uint8_t>::max();
    if (enabled_.Value != 1 || !port_.PortOpen() || cell > kLastCell) {
        return false;
    }
    port_.Output(link::cellCommand(command, static_cast<std::uint8_t>(cell), value));
    return true;
}

}  // namespace korvane::maps
