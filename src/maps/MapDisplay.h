// Draws the map images into a window's grids: each byte in the tuner's units, with the colours that tell what was
// edited.
#pragma once

#include "maps/MapContext.h"
#include "maps/MapControls.h"

namespace korvane::maps {

// How a window takes its injection time scale from the parameters, in milliseconds for one count. May overwrite an
// injection mode that is none.
using InjectionScale = double (*)(core::SharedTables& tables);

class MapDisplay {
public:
    MapDisplay(MapControls& window, const MapContext& context, InjectionScale scale);

    // Sets the window's InjTimeScale.
    void updateScale();

    // Show the image as received, or (OUT) as edited. Events run at each cell of the fuel map.
    void populateFuel();
    void populateFuelOUT();
    void populateIGN();
    void populateIGNOUT();
    void populatePWM();
    void populatePWMOUT();

private:
    MapControls& window_;
    const MapContext& context_;
    InjectionScale scale_;
};

}  // namespace korvane::maps
