// Continues MapForm: the ordinary map window, whose frames take turns in one place.
#include "maps/MapForm.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

namespace {

constexpr MapVariant kVariant{{"frmMaps", "Korvane Tuner, Maps "},
                              kOrdinaryMaps,
                              &ordinaryInjectionScale,
                              Halves::One,
                              Pointing::Keys,
                              "Trace map route"};

// Places of the visible panes, twips.
constexpr int kFirstButton = 4000;
constexpr int kSecondButton = 6000;
constexpr int kFrameTop = 3600;
constexpr int kFrameWidth = 9600;
constexpr int kFrameHeight = 3300;

}  // namespace

FrmMaps::FrmMaps(platform::Machine& machine, const MapContext& mapContext)
    : MapForm(machine, mapContext, kVariant),
      chkFocusOnFuel(*this, "chkFocusOnFuel"),
      chkFocusOnIGN(*this, "chkFocusOnIGN"),
      chkShowPwm(*this, "chkShowPwm") {
    chkFocusOnFuel.Caption = "Focus on Fuel";
    chkFocusOnIGN.Caption = "Focus on Ignition";
    chkShowPwm.Caption = "Show PWM table";
    chkShowPwm.Click = [this] { chkShowPwm_Click(); };
}

void FrmMaps::arrangePanes() {
    const auto features = context().tables.Features;
    chkFocusOnIGN.Enabled = (features & kIgnitionBit) != 0;
    chkFocusOnFuel.Enabled = (features & kInjectionBit) != 0;
    for (auto* frame : {&FrameFuel, &FrameIgn, &FramePWM, &FrameInjAnalys}) {
        frame->Top = frame == &FrameFuel ? 0 : kFrameTop;
        frame->Width = kFrameWidth;
        frame->Height = kFrameHeight;
    }
    FrameInjAnalys.Left = kAway;
    chkShowPwm_Click();
}

// The PWM pane lies over the ignition grid.
void FrmMaps::chkShowPwm_Click() {
    const bool shown = chkShowPwm.Value == 1;
    FramePWM.Left = shown ? 0 : kAway;
    btnReadIgn.Left = shown ? -kFirstButton : kFirstButton;
    btnWriteIgn.Left = shown ? -kSecondButton : kSecondButton;
    btnReadPWM.Left = shown ? kFirstButton : -kFirstButton;
    btnSavePWM.Left = shown ? kSecondButton : -kSecondButton;
    chkInjAnal.Enabled = !shown;
}

// The analyser takes the place of the ignition grid.
void FrmMaps::showAnalyserPane(bool shown) {
    FrameInjAnalys.Left = shown ? 0 : kAway;
    FrameIgn.Left = shown ? kAway : 0;
    FramePWM.Left = shown || chkShowPwm.Value == 0 ? kAway : 0;
    chkShowPwm.Enabled = !shown;
}

// The fuel box wins when both are ticked.
void FrmMaps::followEngine() {
    if (chkFocusOnFuel.Value == 1) {
        focusOn(fuel);
    } else if (chkFocusOnIGN.Value == 1) {
        focusOn(ign);
    }
}

}  // namespace korvane::maps
