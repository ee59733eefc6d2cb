#include "maps/grid/IgnitionDisplay.h"

#include "maps/grid/MapConversions.h"

namespace korvane::maps {

MapDisplay::Reading IgnitionDisplay::read(int, std::uint8_t count, std::string&) {
    return {ignitionDegrees(count)};
}

}  // namespace korvane::maps
