// The window that says what the steady agent knows and does, with what the tuner allows it.
#pragma once

#include "controls/Controls.h"
#include "controls/ListBox.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "core/tables/SharedTables.h"
#include "maps/steady/SteadyTuner.h"

namespace korvane::maps {

// Made anew for each opening.
class FrmSteady : public controls::Window {
public:
    FrmSteady(platform::Machine& machine, SteadyTuner& steady, const core::SharedTables& tables);

    controls::Label lblState{*this, "lblState"};
    controls::Label lblReason{*this, "lblReason"};  // why it is stopped
    controls::Label lblCell{*this, "lblCell"};      // the cell in which the engine runs
    controls::TextBox txtRich{*this, "txtRich"};    // the authority, per cent
    controls::TextBox txtLean{*this, "txtLean"};
    controls::CheckBox chkCarry{*this, "chkCarry"};
    controls::ControlArray<controls::Label> lblZone{*this, "lblZone", static_cast<int>(SteadyChoices::kZones)};
    controls::ControlArray<controls::TextBox> txtDelay{*this, "txtDelay", static_cast<int>(SteadyChoices::kZones)};
    controls::ListBox lstSamples{*this, "lstSamples"};  // how many were used, and rejected for what
    controls::CommandButton btnPutBack{*this, "btnPutBack"};
    controls::CommandButton btnNewBaseline{*this, "btnNewBaseline"};
    controls::Label lblNote{*this, "lblNote"};  // what came of the last order
    controls::Timer Timer1{*this, "Timer1", true, 500};

protected:
    void Form_Load() override;

private:
    void describe();
    void connect();
    void showChoices();
    void showTaken();
    void showState();
    void showSamples();
    void take(const controls::TextBox& box, controls::Property<double>& number, double most);

    SteadyTuner& steady_;
    const core::SharedTables& tables_;
};

}  // namespace korvane::maps
