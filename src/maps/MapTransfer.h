// Moves the tables between the PC and the ECU.
#pragma once

#include "maps/MapContext.h"
#include "maps/MapControls.h"
#include "maps/MapDisplay.h"

namespace korvane::maps {

// Sets the clicks of the read and send buttons. Any of them may be pressed again, and the window closed or the cable
// pulled, while one waits.
class MapTransfer {
public:
    // How many halves a map goes out in; two need an acknowledgement each.
    enum class Halves { One, Two };

    MapTransfer(MapControls& window, const MapContext& context, MapDisplay& display, Halves halves);

    // The first reads after the load: misc, fuel, ignition, PWM.
    void initialReads();

    // Brings MiscBlock onto the controls. False is how a reply of the ECU calls it: the poll stands still meanwhile.
    void LoadMisc(bool skipTimer);
    // The same display work after a file load, without timers; ends with its own caption.
    void showMiscOfFile();

private:
    MapControls& window_;
    const MapContext& context_;
    MapDisplay& display_;
    Halves halves_;
};

}  // namespace korvane::maps
