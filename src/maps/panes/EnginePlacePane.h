// The mark on the cell that the ECU runs in.
#pragma once

#include <vector>

#include "controls/Color.h"
#include "controls/Object.h"
#include "link/Windows.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

class EnginePlacePane : public MapPane, public link::EnginePlacePart, private controls::Observer {
public:
    // `grids` are those that show the mark.
    EnginePlacePane(PaneWindow& window, std::vector<MapGrid*> grids);
    EnginePlacePane(const EnginePlacePane&) = delete;
    EnginePlacePane& operator=(const EnginePlacePane&) = delete;
    ~EnginePlacePane() override;

    // Marks the cell that the ECU runs in. A MapPlace outside the grid marks none.
    void updateMapPlace() override;
    void tickPane() override { showPlace(); }

protected:
    // Whether the cells where the engine was keep their mark.
    [[nodiscard]] virtual bool leavesTrace() const { return false; }
    [[nodiscard]] const std::vector<MapGrid*>& markedGrids() const { return grids_; }

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void markCell(int cell, controls::Color color);
    // The cell of the moment, in all grids of the window and in the 3D view; none while no live data come.
    void showPlace();

    std::vector<MapGrid*> grids_;
};

}  // namespace korvane::maps
