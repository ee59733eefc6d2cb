// The key and mouse handlers of the map grids and of the misc boxes.
#pragma once

#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"

namespace korvane::maps {

// Sets the events of the cells of txtFuel, txtIgn and txtPWM and of txtMisc.
class GridEditing {
public:
    // Whether a block of ignition cells can be chosen with the mouse, as one of fuel cells can.
    enum class IgnitionMouse { No, Yes };

    GridEditing(MapControls& window, const MapContext& context, MapDisplay& display, IgnitionMouse mouse);

    // The key-down handlers, also called by the agent.
    void fuelKeyDown(int index, int keyCode, int shift);
    void ignKeyDown(int index, int keyCode, int shift);
    void pwmKeyDown(int index, int keyCode, int shift);

private:
    MapControls& window_;
    const MapContext& context_;
    MapDisplay& display_;
};

}  // namespace korvane::maps
