// The PWM table: its grid, its editing, and its transfer to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/PwmDisplay.h"
#include "maps/panes/GridPane.h"
#include "maps/transfer/PwmTransfer.h"

namespace korvane::maps {

class PwmPane : public GridPane, public link::PwmMapPart {
public:
    explicit PwmPane(PaneWindow& window);

    controls::Frame& FramePWM = mapFrame();
    MapGrid& pwm = mapGrid();  // txtPWM, lblRpmP, lblMapP
    controls::CommandButton& btnReadPWM = readButton();
    controls::CommandButton& btnSavePWM = sendButton();

    // Show the table as received, or (OUT) as edited.
    void populatePWM() { showReceived(); }
    void populatePWMOUT() override { showEdited(); }
    // The key-down handler. RuntimeError 9 for a cell outside the grid; nothing is changed then.
    void pwmKeyDown(int index, int keyCode, int shift) { editCell(index, keyCode, shift); }

    void loadPane(std::int32_t features) override;
    void readPane() override;
    void acceptLoadedTune(bool withPwm) override;

private:
    [[nodiscard]] const MapDisplay& mapDisplay() const override { return display_; }
    [[nodiscard]] MapDisplay& mapDisplay() override { return display_; }
    void redrawCell(int cell) override;

    PwmDisplay display_;
    PwmTransfer transfer_;
};

}  // namespace korvane::maps
