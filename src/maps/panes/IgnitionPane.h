// The ignition map: its grid, its editing, and its transfer to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/EditRules.h"
#include "maps/grid/IgnitionDisplay.h"
#include "maps/panes/WholeMapPane.h"

namespace korvane::maps {

class IgnitionPane : public WholeMapPane, public link::IgnitionMapPart {
public:
    IgnitionPane(PaneWindow& window, Halves halves, Pointing pointing);

    controls::Frame& FrameIgn = mapFrame();
    MapGrid& ign = mapGrid();  // txtIgn, lblRpmI, lblMapI
    controls::CommandButton& btnReadIgn = readButton();
    controls::CommandButton& btnWriteIgn = sendButton();

    // Show the image as received, or (OUT) as edited.
    void populateIGN() override { showReceived(); }
    void populateIGNOUT() { showEdited(); }
    // The key-down handler. RuntimeError 9 for a cell outside the grid; nothing is changed then.
    void ignKeyDown(int index, int keyCode, int shift) { editCell(index, keyCode, shift); }

private:
    [[nodiscard]] const MapDisplay& mapDisplay() const override { return display_; }
    [[nodiscard]] MapDisplay& mapDisplay() override { return display_; }

    IgnitionDisplay display_;
};

}  // namespace korvane::maps
