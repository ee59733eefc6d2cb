// The key and mouse handlers of the map grids and of the misc boxes.
#pragma once

#include "maps/GridEditor.h"
#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"
#include "maps/RealtimeChanges.h"

namespace korvane::maps {

// Sets the events of the cells of txtFuel, txtIgn and txtPWM, and of txtMisc.
class GridEditing {
public:
    // Whether a block of ignition cells can be chosen with the mouse, as one of fuel cells can.
    enum class IgnitionMouse { No, Yes };

    GridEditing(MapControls& window, const MapContext& context, MapDisplay& display, IgnitionMouse mouse);

    // The key-down handlers, also called by the agent. RuntimeError 9 for a cell that the grid has not got; nothing is
    // changed then.
    void fuelKeyDown(int index, int keyCode, int shift) { fuel_.keyDown(index, keyCode, shift); }
    void ignKeyDown(int index, int keyCode, int shift) { ign_.keyDown(index, keyCode, shift); }
    void pwmKeyDown(int index, int keyCode, int shift) { pwm_.keyDown(index, keyCode, shift); }

private:
    [[nodiscard]] GridRules rulesOfFuel();
    [[nodiscard]] GridRules rulesOfIgn(IgnitionMouse mouse);
    [[nodiscard]] GridRules rulesOfPwm();
    void showPwmStep(int cell);

    MapControls& window_;
    const MapContext& context_;
    MapDisplay& display_;
    RealtimeChanges realtime_;
    GridEditor fuel_;
    GridEditor ign_;
    GridEditor pwm_;
};

}  // namespace korvane::maps
