// How many cells of a map the tuner sees otherwise than the ECU has them.
#pragma once

#include "maps/grid/MapGeometry.h"
#include "maps/grid/MapImages.h"
#include "maps/transfer/MapContext.h"

namespace korvane::maps {

struct UnsentCells {
    int unsent = 0;    // the ECU runs on another value
    int unstored = 0;  // the ECU runs on this value and loses it when it restarts

    friend bool operator==(const UnsentCells&, const UnsentCells&) = default;
};

// Counts cells of a grid of this shape, as far as its map can be sent. A cell that was neither read nor sent yet counts
// as unsent when it was edited.
[[nodiscard]] UnsentCells unsentCells(const MapContext& context, const MapImages& map, MapGeometry shape);
// Whether the ECU runs on another value than the cell's.
[[nodiscard]] bool isUnsent(const MapContext& context, const MapImages& map, int cell);

}  // namespace korvane::maps
