#include "maps/grid/RealtimeChanges.h"

#include "link/Commands.h"

namespace korvane::maps {

bool RealtimeChanges::send(std::uint8_t command, int cell, std::uint8_t value) const {
    if (enabled_.Value != 1 || !port_.PortOpen() || cell > kLastCell) {
        return false;
    }
    port_.Output(link::cellCommand(command, static_cast<std::uint8_t>(cell), value));
    return true;
}

}  // namespace korvane::maps
