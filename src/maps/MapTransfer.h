// Moves the tables between the PC and the ECU.
#pragma once

#include "maps/MapLine.h"
#include "maps/MapWriter.h"
#include "maps/MiscTransfer.h"
#include "maps/PwmTransfer.h"

namespace korvane::maps {

// Sets the clicks of the read and send buttons. Any of them may be pressed again, and the window closed or the cable
// pulled, while one waits.
class MapTransfer {
public:
    MapTransfer(MapControls& window, const MapContext& context, Halves halves);

    // The first reads after the load: misc, fuel, ignition, PWM.
    void initialReads();

    // Brings MiscBlock onto the controls. False is how a reply of the ECU calls it: the poll stands still meanwhile.
    void LoadMisc(bool skipTimer) { misc_.LoadMisc(skipTimer); }
    // The same display work after a file load, without timers; ends with its own caption.
    void showMiscOfFile() { misc_.showMiscOfFile(); }

private:
    // Asks for a table and does not wait: the answer comes through the dispatcher, or never.
    void request(std::uint8_t letter);

    MapLine line_;
    MapWriter writer_;
    MiscTransfer misc_;
    PwmTransfer pwm_;
};

}  // namespace korvane::maps
