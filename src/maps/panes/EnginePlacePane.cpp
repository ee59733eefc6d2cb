#include "maps/panes/EnginePlacePane.h"

#include <utility>

#include "maps/Frm3Dmap.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

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
    place_.heard(tables.MapPlace, paneWindow().machine().pump.now());
    showPlace();
    paneWindow().showNotes();
}

void EnginePlacePane::showPlace() {
    const auto& connection = paneWindow().context().connection;
    const auto cell = connection.MSComm1.PortOpen()
                          ? place_.cell(paneWindow().geometry, paneWindow().machine().pump.now(),
                                        connection.TimerRequestData.Interval)
                          : std::nullopt;
    for (auto* pane : paneWindow().panes()) {
        if (auto* const grid = pane->paneGrid()) {
            grid->EngineCell = cell;
        }
    }
    paneWindow().context().frm3Dmap.engineAt(cell.value_or(Marks3D::kNoCell));
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
