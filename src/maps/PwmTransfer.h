// Reads the PWM table from the ECU and sends it, cell by cell.
#pragma once

#include "maps/MapLine.h"

namespace korvane::maps {

// Sets the clicks of btnReadPWM and btnSavePWM.
class PwmTransfer {
public:
    PwmTransfer(MapControls& window, const MapContext& context);

    // What btnReadPWM does. The caption speaks of the end at once; the cells come later, at the dispatcher's pace.
    // With the port closed nothing else happens.
    void read();

private:
    void request();
    void save();
    void sendCell(int cell);

    MapControls& window_;
    const MapContext& context_;
    MapLine line_;
};

}  // namespace korvane::maps
