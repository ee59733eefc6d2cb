#include "maps/MapForm.h"

#include <array>

#include "maps/FrmInjScale.h"
#include "maps/grid/Selection.h"
#include "maps/steady/SteadyTuner.h"

namespace korvane::maps {

namespace {

constexpr MiscCaptions kMiscCaptions{
    .bits = {"Enable PWM", "Enable Choke", "Enable StartHelp", "Enable Injection", "Enable Accel pump",
             "Enable Ignition", "", "", "Enable Voltage", "Enable Lambda", "Enable motor brake", "Enable Launch/ALS",
             "", "", "Enable SHift light", "Enable RPM limit"},
    .receiving = "Getting data from Sarnex!",
};

// The order in which scripts see the controls, grid by grid and button by button across the panes.
constexpr std::array<std::string_view, 48> kControlOrder{"FrameFuel",
                                                         "FrameIgn",
                                                         "FramePWM",
                                                         "FrameInjAnalys",
                                                         "txtFuel",
                                                         "lblRpmF",
                                                         "lblMapF",
                                                         "txtIgn",
                                                         "lblRpmI",
                                                         "lblMapI",
                                                         "txtPWM",
                                                         "lblRpmP",
                                                         "lblMapP",
                                                         "txtInjAnalys",
                                                         "lblRpmIA",
                                                         "lblMapIA",
                                                         "btnReadFuel",
                                                         "btnWriteFuel",
                                                         "btnReadIgn",
                                                         "btnWriteIgn",
                                                         "btnReadPWM",
                                                         "btnSavePWM",
                                                         "btnReadMisc",
                                                         "btnSaveMisc",
                                                         "btnSave",
                                                         "btnLoad",
                                                         "btnShow3D",
                                                         "btnInjScale",
                                                         "btnHelp",
                                                         "prgTransfer",
                                                         "FrameMisc",
                                                         "lblMisc",
                                                         "txtMisc",
                                                         "CheckMisc",
                                                         "FrameINJMaxOpen",
                                                         "optINJMaxOpen",
                                                         "chkOnlineChanges",
                                                         "chkTrace",
                                                         "chkInjAnal",
                                                         "chkUseTuningAgent",
                                                         "chkSimplemode",
                                                         "chkModifyInjSetpoint",
                                                         "imgAgentLed",
                                                         "btnSaveLambdaSetpoint",
                                                         "btnloadLambdaSetpoint",
                                                         "Timer1",
                                                         "TimerInitialGetData",
                                                         "TimeOutTimer"};

}  // namespace

MapForm::MapForm(platform::Machine& machine, const MapContext& mapContext, const MapVariant& variant)
    : PaneWindow(machine, mapContext, variant.title, variant.geometry),
      MiscPane(ground(), kMiscCaptions),
      FuelPane(ground(), variant.scale, variant.halves, txtMisc(kInjectionOffset)),
      IgnitionPane(ground(), variant.halves, variant.ignitionPointing),
      PwmPane(ground()),
      AnalyserPane(ground(), {&btnReadIgn, &btnWriteIgn, &btnReadPWM, &btnSavePWM}),
      FilePane(ground()),
      TracePane(ground(), variant.traceCaption, {&fuel, &ign, &pwm}),
      ToolPane(ground()),
      TimerInitialGetData(*this, "TimerInitialGetData", false, 100) {
    arrange(kControlOrder);
    TimerInitialGetData.Tick = [this] {
        TimerInitialGetData.Enabled = false;
        initialReads();
    };
}

std::vector<std::span<const controls::PropertyInfo>> MapForm::propertyTables() const {
    auto tables = PaneWindow::propertyTables();
    tables.push_back(fuelProperties());
    return tables;
}

void MapForm::Form_Load() {
    context().analyser.setMapWindow(this);
    updateScale();
    PaneWindow::Form_Load();
    TimerInitialGetData.Enabled = true;
}

bool MapForm::takesKey(int keyCode, int shift) {
    auto* const steady = context().steady;
    if (keyCode != kPutBackKey || shift != 0 || steady == nullptr) {
        return PaneWindow::takesKey(keyCode, shift);
    }
    HistoryNote = steady->putBack(geometry);
    return true;
}

bool MapForm::Form_Unload() {
    if (context().steady != nullptr) {
        context().steady->closes(this);
    }
    static_cast<void>(context().frmInjScale.unload());
    return PaneWindow::Form_Unload();
}

LiveStrip::Cell MapForm::fuelOf(int cell) {
    return {fuel(cell).Text.get(), context().analyser.Setpointget(cell)};
}

// With a block selected the key acts on the block, so that the cell need not be in the grid.
void MapForm::pressFuelKey(int cell, int keyCode, int shift) {
    const Stay stay(*this);
    const int pressed = hasBlock(fuel) ? fuel.SelFirst - 1 : cell;
    if (fuel.geometry.has(pressed)) {
        agentKeyDown(pressed, keyCode, shift);
    }
}

void MapForm::setSetpointToolTip(int cell, std::string_view text) {
    if (analys.geometry.has(cell)) {
        analys(cell).ToolTipText = text;
    }
}

}  // namespace korvane::maps
