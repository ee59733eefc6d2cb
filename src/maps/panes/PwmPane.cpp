#include "maps/panes/PwmPane.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/EditRules.h"

namespace korvane::maps {

namespace {
constexpr int kFirstEditedCell = 64;  // those before it are no cells that the ECU uses
}

PwmPane::PwmPane(PaneWindow& window)
    : MapPane(window),
      FramePWM(window, "FramePWM"),
      pwm(window, {"txtPWM", "lblRpmP", "lblMapP"}, window.geometry, FramePWM),
      btnReadPWM(window, "btnReadPWM"),
      btnSavePWM(window, "btnSavePWM"),
      display_(pwm, window.context().tables, window.context().frm3Dmap),
      editor_(window, pwm, window.context().tables, rules()),
      transfer_(window, pwm) {
    FramePWM.Caption = "PWM [ms]";
    btnReadPWM.Caption = "Read PWM values";
    btnReadPWM.Click = [this] { transfer_.read(); };
    btnSavePWM.Caption = "Save PWM values";
    btnSavePWM.Click = [this] { transfer_.save(); };
}

// PWM values reach the ECU by their own button only.
GridRules PwmPane::rules() {
    auto rules = pwmRules();
    rules.redraw = [this] { populatePWMOUT(); };
    rules.redrawCell = [this](int cell) { showStep(cell); };
    return rules;
}

void PwmPane::showStep(int cell) {
    const auto& context = paneWindow().context();
    const double time = core::checked(context.tables.PwmMapOut, cell) * context.tables.TickD;
    pwm(cell).Text = core::numberText(core::toCurrency(time)).view();
    context.frm3Dmap.Update3D(kPwmTable);
}

void PwmPane::loadPane(std::int32_t) {
    pwm.place();
    for (int cell = 0; cell < kFirstEditedCell; ++cell) {
        pwm(cell).Enabled = false;
    }
}

void PwmPane::readPane() {
    transfer_.read();
    paneWindow().line().pump();
}

void PwmPane::populatePWMOUT() {
    const controls::Window::Stay stay(paneWindow());
    display_.populatePWMOUT();
}

void PwmPane::acceptLoadedTune(bool withPwm) {
    if (!withPwm) {
        return;
    }
    auto& tables = paneWindow().context().tables;
    tables.PwmMapOut = tables.PwmMapIn;
    for (int cell = 0; cell < pwm.geometry.cells(); ++cell) {
        pwm(cell).Text = core::numberText(core::checked(tables.PwmMapOut, cell) * tables.TickD).view();
    }
}

}  // namespace korvane::maps
