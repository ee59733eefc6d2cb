#include "maps/panes/TracePane.h"

#include <utility>

namespace korvane::maps {

TracePane::TracePane(PaneWindow& window, std::string_view caption, std::vector<MapGrid*> grids)
    : MapPane(window), chkTrace(window, "chkTrace"), grids_(std::move(grids)) {
    chkTrace.Caption = caption;
    chkTrace.Click = [this] {
        if (chkTrace.Value == 0) {
            clearTrace();
        }
    };
}

void TracePane::updateMapPlace() {
    auto& tables = paneWindow().context().tables;
    if (chkTrace.Value == 0) {
        markCell(tables.PrevMapPlace, controls::kWhite);
    }
    markCell(tables.MapPlace, controls::kRed);
    tables.PrevMapPlace = tables.MapPlace;
}

void TracePane::markCell(int cell, controls::Color color) {
    if (!paneWindow().geometry.has(cell)) {
        return;
    }
    for (auto* grid : grids_) {
        (*grid)(cell).BackColor = color;
    }
}

void TracePane::clearTrace() {
    for (auto* grid : grids_) {
        for (auto& cell : grid->cells) {
            if (cell.BackColor == controls::kRed) {
                cell.BackColor = controls::kWhite;
            }
        }
    }
}

}  // namespace korvane::maps
