// The ignition map as its grid shows it, in degrees.
#pragma once

#include "maps/grid/MapDisplay.h"

namespace korvane::maps {

class IgnitionDisplay : public MapDisplay {
public:
    IgnitionDisplay(MapGrid& ign, const MapContext& context)
        : MapDisplay(ign, context, kIgnitionImages, Rewrite::Unlocked) {}

    [[nodiscard]] Reading readingOf(int cell, std::uint8_t count) const override;
};

}  // namespace korvane::maps
