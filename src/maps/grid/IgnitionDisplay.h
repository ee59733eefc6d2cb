// The ignition map as its grid shows it, in degrees.
#pragma once

#include <string>

#include "maps/grid/MapDisplay.h"

namespace korvane::maps {

class IgnitionDisplay : public MapDisplay {
public:
    IgnitionDisplay(MapGrid& ign, const MapContext& context)
        : MapDisplay(ign, context, kIgnitionImages, Rewrite::Unlocked) {}

private:
    [[nodiscard]] Reading read(int cell, std::uint8_t count, std::string& toolTip) override;
};

}  // namespace korvane::maps
