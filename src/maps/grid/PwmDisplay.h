// Draws the PWM table into its grid, in milliseconds.
#pragma once

#include "core/tables/SharedTables.h"
#include "maps/grid/MapGrid.h"

namespace korvane::maps {

class Frm3Dmap;

class PwmDisplay {
public:
    PwmDisplay(MapGrid& grid, const core::SharedTables& tables, Frm3Dmap& frm3Dmap)
        : grid_(grid), tables_(tables), frm3Dmap_(frm3Dmap) {}

    // Show the table as received, or (OUT) as edited.
    void populatePWM() { show(tables_.PwmMapIn); }
    void populatePWMOUT() { show(tables_.PwmMapOut); }

private:
    void show(const core::MapImage& image);

    MapGrid& grid_;
    const core::SharedTables& tables_;
    Frm3Dmap& frm3Dmap_;
};

}  // namespace korvane::maps
