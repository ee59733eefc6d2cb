#include "maps/panes/PwmPane.h"

#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/EditRules.h"

namespace korvane::maps {

namespace {

constexpr int kFirstEditedCell = 64;  // those before it are no cells that the ECU uses

constexpr GridPaneNames kNames{{"FramePWM", "PWM [ms]"},
                               {"txtPWM", "lblRpmP", "lblMapP"},
                               {"btnReadPWM", "Read PWM values"},
                               {"btnSavePWM", "Save PWM values"},
                               {"PWM", "PWM", "ms"}};

}  // namespace

// PWM values reach the ECU by their own button only.
PwmPane::PwmPane(PaneWindow& window)
    : GridPane(window, kNames, kPwmImages, pwmRules()), display_(pwm, window.context()), transfer_(window, pwm) {
    btnReadPWM.Click = [this] { transfer_.read(); };
    btnSavePWM.Click = [this] { transfer_.save(); };
}

void PwmPane::redrawCell(int cell) {
    pwm(cell).Text = core::numberText(core::toCurrency(editedByte(cell) * tables().TickD)).view();
    display_.noteFill();
    paneWindow().context().frm3Dmap.Update3D(kPwmTable);
}

void PwmPane::loadPane(std::int32_t features) {
    GridPane::loadPane(features);
    for (int cell = 0; cell < kFirstEditedCell; ++cell) {
        pwm(cell).Enabled = false;
    }
}

void PwmPane::readPane() {
    transfer_.read();
    paneWindow().line().pump();
}

void PwmPane::acceptLoadedTune(bool withPwm) {
    if (!withPwm) {
        return;
    }
    display_.noteLoaded();
    for (int cell = 0; cell < pwm.geometry.cells(); ++cell) {
        pwm(cell).Text = core::numberText(editedByte(cell) * tables().TickD).view();
    }
}

}  // namespace korvane::maps
