// Draws the fuel map into its grid, in milliseconds.
#pragma once

#include <optional>
#include <string>

#include "maps/grid/CellFace.h"
#include "maps/transfer/MapContext.h"

namespace korvane::maps {

class FuelPane;

// How a window takes its injection time scale from the parameters, in milliseconds for one count. May overwrite an
// injection mode that is none.
using InjectionScale = double (*)(core::SharedTables& tables);

class FuelDisplay {
public:
    FuelDisplay(FuelPane& pane, controls::Window& window, const MapContext& context, InjectionScale scale,
                const controls::TextBox& injectionOffset);

    // Sets the pane's InjTimeScale.
    void updateScale();

    // Show the image as received, or (OUT) as edited. Events run at each cell. RuntimeError 6 where the injection
    // offset makes a time that single precision can't hold.
    void populateFuel() { show(context_.tables.FuelMapIn, Rewrite::Locked); }
    void populateFuelOUT() { show(context_.tables.FuelMapOut, Rewrite::Unlocked); }

private:
    // A pulse and the time that the engine leaves it, in milliseconds.
    struct Pulse {
        double length;
        double available;
    };

    void show(const core::MapImage& image, Rewrite rewrite);
    void showCell(int cell, std::uint8_t count, Rewrite rewrite);
    void composeToolTip(int cell, std::uint8_t count, const std::optional<Pulse>& pulse);

    FuelPane& pane_;
    controls::Window& window_;
    const MapContext& context_;
    InjectionScale scale_;
    const controls::TextBox& injectionOffset_;
    std::string toolTip_;  // kept for its memory
};

}  // namespace korvane::maps
