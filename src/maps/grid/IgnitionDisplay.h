// Draws the ignition map into its grid, in degrees.
#pragma once

#include "core/tables/SharedTables.h"
#include "maps/grid/CellFace.h"
#include "maps/grid/MapGrid.h"

namespace korvane::maps {

class Frm3Dmap;

class IgnitionDisplay {
public:
    IgnitionDisplay(MapGrid& grid, const core::SharedTables& tables, Frm3Dmap& frm3Dmap)
        : grid_(grid), tables_(tables), frm3Dmap_(frm3Dmap) {}

    // Show the image as received, or (OUT) as edited.
    void populateIGN() { show(tables_.IgnMapIn, Rewrite::Locked); }
    void populateIGNOUT() { show(tables_.IgnMapOut, Rewrite::Unlocked); }

private:
    void show(const core::MapImage& image, Rewrite rewrite);

    MapGrid& grid_;
    const core::SharedTables& tables_;
    Frm3Dmap& frm3Dmap_;
};

}  // namespace korvane::maps
