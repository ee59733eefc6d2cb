// Draws the map images into a window's grids: each byte in the tuner's units, with the colours that tell what was
// edited.
#pragma once

#include <optional>
#include <string>

#include "maps/CellFace.h"
#include "maps/IgnitionDisplay.h"
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

    // Show the image as received, or (OUT) as edited. Events run at each cell of the fuel map. RuntimeError 6 where the
    // injection offset makes a time that single precision can't hold.
    void populateFuel() { showFuel(context_.tables.FuelMapIn, Rewrite::Locked); }
    void populateFuelOUT() { showFuel(context_.tables.FuelMapOut, Rewrite::Unlocked); }
    void populateIGN() { ignition_.populateIGN(); }
    void populateIGNOUT() { ignition_.populateIGNOUT(); }
    void populatePWM() { showPwm(context_.tables.PwmMapIn); }
    void populatePWMOUT() { showPwm(context_.tables.PwmMapOut); }

private:
    // A pulse and the time that the engine leaves it, in milliseconds.
    struct Pulse {
        double length;
        double available;
    };

    void showFuel(const core::MapImage& image, Rewrite rewrite);
    void showFuelCell(int cell, std::uint8_t count, Rewrite rewrite);
    void composeFuelToolTip(int cell, std::uint8_t count, const std::optional<Pulse>& pulse);
    void showPwm(const core::MapImage& image);

    MapControls& window_;
    const MapContext& context_;
    InjectionScale scale_;
    IgnitionDisplay ignition_;
    std::string toolTip_;  // kept for its memory
};

}  // namespace korvane::maps
