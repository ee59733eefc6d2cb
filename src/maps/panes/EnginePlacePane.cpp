#include "maps/panes/EnginePlacePane.h"

#include <optional>
#include <utility>

#include "maps/Frm3Dmap.h"

namespace korvane::maps {

EnginePlacePane::EnginePlacePane(PaneWindow& window, std::vector<MapGrid*> grids)
    : MapPane(window), grids_(std::move(grids)) {
    window.context().connection.linkState.addObserver(*this);
}

EnginePlacePane::~EnginePlacePane() {
    paneWindow().context().connection.linkState.removeObserver(*this);
}

// At once, also while a message box holds the window's ticks.
void EnginePlacePane::propertyChanged(controls::Object&, const void* property) {
    const auto& link = paneWindow().context().connection.linkState;
    if (property == link.stateProperty() && link.state() != link::LinkState::State::Live) {
        showPlace();
    }
}

void EnginePlacePane::updateMapPlace() {
    auto& tables = paneWindow().context().tables;
    if (!leavesTrace()) {
        markCell(tables.PrevMapPlace, controls::kWhite);
    }
    markCell(tables.MapPlace, controls::kRed);
    tables.PrevMapPlace = tables.MapPlace;
    paneWindow().showNotes();
    showPlace();
}

void EnginePlacePane::showPlace() {
    const auto& context = paneWindow().context();
    const int place = context.tables.MapPlace;
    const bool known = context.connection.linkState.state() == link::LinkState::State::Live;
    const auto cell = known && paneWindow().geometry.has(place) ? std::optional(place) : std::nullopt;
    for (auto* pane : paneWindow().panes()) {
        if (auto* const grid = pane->paneGrid()) {
            grid->EngineCell = cell;
        }
    }
    // There the mark bears the speed and load of its cell, which are others in a map of another size.
    const bool agrees = paneWindow().sizeNote.Text.get().empty();
    context.frm3Dmap.engineAt(known && agrees ? place : Marks3D::kNoCell);
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
