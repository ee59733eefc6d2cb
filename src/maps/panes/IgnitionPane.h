// The ignition map: its grid, its editing, and its way to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/EditRules.h"
#include "maps/grid/IgnitionDisplay.h"
#include "maps/grid/RealtimeChanges.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"
#include "maps/transfer/MapWriter.h"

namespace korvane::maps {

class IgnitionPane : public MapPane, public link::IgnitionMapPart {
public:
    IgnitionPane(PaneWindow& window, Halves halves, Pointing pointing);

    controls::Frame FrameIgn;
    MapGrid ign;  // txtIgn, lblRpmI, lblMapI
    controls::CommandButton btnReadIgn, btnWriteIgn;

    // Show the image as received, or (OUT) as edited.
    void populateIGN() override;
    void populateIGNOUT() { display_.populateIGNOUT(); }
    // The key-down handler. RuntimeError 9 for a cell that the grid has not got; nothing is changed then.
    void ignKeyDown(int index, int keyCode, int shift) { editor_.keyDown(index, keyCode, shift); }

    [[nodiscard]] MapGrid* paneGrid() override { return &ign; }
    void loadPane(std::int32_t features) override;
    void readPane() override;
    void showLoadedTune() override;
    void acceptLoadedTune(bool withPwm) override;
    void showAcceptedTune() override { populateIGNOUT(); }

private:
    [[nodiscard]] GridRules rules(Pointing pointing);

    IgnitionDisplay display_;
    RealtimeChanges realtime_;
    GridEditor editor_;
    MapWriter writer_;
};

}  // namespace korvane::maps
