#include "maps/grid/IgnitionDisplay.h"

#include "maps/grid/MapConversions.h"

namespace korvane::maps {

MapDisplay::Reading IgnitionDisplay::readingOf(int, std::uint8_t count) const {
    return {ignitionDegrees(count)};
}

}  // namespace korvane::maps
