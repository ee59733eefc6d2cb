// The files of a map window: the tune and the lambda setpoints.
#pragma once

#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"
#include "maps/MapTransfer.h"

namespace korvane::maps {

// Sets the clicks of btnSave, btnLoad, btnSaveLambdaSetpoint and btnloadLambdaSetpoint.
class MapFiles {
public:
    MapFiles(MapControls& window, const MapContext& context, MapDisplay& display, MapTransfer& transfer);

private:
    MapControls& window_;
    const MapContext& context_;
    MapDisplay& display_;
    MapTransfer& transfer_;
};

}  // namespace korvane::maps
