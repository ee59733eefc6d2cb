// The mark on the cell that the ECU runs in, and the trace that it may leave.
#pragma once

#include <vector>

#include "controls/Color.h"
#include "link/Windows.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

class TracePane : public MapPane, public link::EnginePlacePart {
public:
    // `grids` are those that show the mark.
    TracePane(PaneWindow& window, std::string_view caption, std::vector<MapGrid*> grids);

    controls::CheckBox chkTrace;

    // Marks the cell that the ECU runs in. A MapPlace outside the grid marks none.
    void updateMapPlace() override;

private:
    void markCell(int cell, controls::Color color);
    void clearTrace();

    std::vector<MapGrid*> grids_;
};

}  // namespace korvane::maps
