#include "maps/grid/PwmDisplay.h"

#include "maps/grid/MapConversions.h"

namespace korvane::maps {

namespace {
constexpr double kPulsesPerCycle = 4.0;
}

MapDisplay::Reading PwmDisplay::readingOf(int cell, std::uint8_t count) const {
    const double time = pwmTime(count, tables().TickD);
    return {time, cycleTime(grid().geometry.rpmOf(cell)) / kPulsesPerCycle < time};
}

}  // namespace korvane::maps
