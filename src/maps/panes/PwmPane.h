// The PWM table: its grid, its editing, and its way to the ECU.
#pragma once

#include "link/Windows.h"
#include "maps/grid/GridEditor.h"
#include "maps/grid/PwmDisplay.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"
#include "maps/transfer/PwmTransfer.h"

namespace korvane::maps {

class PwmPane : public MapPane, public link::PwmMapPart {
public:
    explicit PwmPane(PaneWindow& window);

    controls::Frame FramePWM;
    MapGrid pwm;  // txtPWM, lblRpmP, lblMapP
    controls::CommandButton btnReadPWM, btnSavePWM;

    // Show the table as received, or (OUT) as edited.
    void populatePWM() { display_.populatePWM(); }
    void populatePWMOUT() override;
    // The key-down handler. RuntimeError 9 for a cell that the grid has not got; nothing is changed then.
    void pwmKeyDown(int index, int keyCode, int shift) { editor_.keyDown(index, keyCode, shift); }

    [[nodiscard]] MapGrid* paneGrid() override { return &pwm; }
    void loadPane(std::int32_t features) override;
    void readPane() override;
    void acceptLoadedTune(bool withPwm) override;

private:
    [[nodiscard]] GridRules rules();
    void showStep(int cell);

    PwmDisplay display_;
    GridEditor editor_;
    PwmTransfer transfer_;
};

}  // namespace korvane::maps
