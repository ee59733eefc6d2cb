#include "maps/RealtimeChanges.h"

#include <array>
#include <limits>

namespace korvane::maps {

void RealtimeChanges::send(std::uint8_t command, int cell, std::uint8_t value) const {
    constexpr int kLastCell = std::numeric_limits<std::uint8_t>::max();
    if (enabled_.Value != 1 || !port_.PortOpen() || cell > kLastCell) {
        return;
    }
    const auto index = static_cast<std::uint8_t>(cell);
    const auto end = static_cast<std::uint8_t>(~command);
    port_.Output(std::array{command, index, index, value, value, end});
}

}  // namespace korvane::maps
