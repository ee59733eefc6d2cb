#include "maps/panes/EnginePlacePane.h"

#include <utility>

#include "maps/Frm3Dmap.h"

namespace korvane::maps {

EnginePlacePane::EnginePlacePane(PaneWindow& window, std::vector<MapGrid*> grids)
    : MapPane(window), grids_(std::move(grids)) {}

void EnginePlacePane::updateMapPlace() {
    auto& tables = paneWindow().context().tables;
    if (!leavesTrace()) {
        markCell(tables.PrevMapPlace, controls::kWhite);
    }
    markCell(tables.MapPlace, controls::kRed);
    tables.PrevMapPlace = tables.MapPlace;
    paneWindow().showNotes();
    paneWindow().context().frm3Dmap.engineAt(paneWindow().geometry.has(tables.MapPlace) ? tables.MapPlace
                                                                                        : Marks3D::kNoCell);
}

void EnginePlacePane::markCell(int cell, controls::Color color) {
    if (!paneWindow().geometry.has(cell)) {
        return;
    }
    for (auto* grid : grids_) {
        (*grid)(cell).BackColor = color;
    }
}

}  // namespace korvane::maps
