#include "maps/panes/TracePane.h"

#include <utility>

namespace korvane::maps {

TracePane::TracePane(PaneWindow& window, std::string_view caption, std::vector<MapGrid*> grids)
    : EnginePlacePane(window, std::move(grids)), chkTrace(window, "chkTrace") {
    chkTrace.Caption = caption;
    chkTrace.Click = [this] {
        if (chkTrace.Value == 0) {
            clearTrace();
        }
    };
}

void TracePane::clearTrace() {
    for (auto* grid : markedGrids()) {
        for (auto& cell : grid->cells) {
            if (cell.BackColor == controls::kRed) {
                cell.BackColor = controls::kWhite;
            }
        }
    }
}

}  // namespace korvane::maps
