// The window that says what the steady agent knows and does, with what the tuner allows it.
#pragma once

#include "controls/Controls.h"
#include "controls/ListBox.h"
#include "controls/PictureBox.h"
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
    // What is typed in a box is taken by Enter, or when the focus leaves it; what a script puts there at once.
    controls::TextBox txtRich{*this, "txtRich"};  // the authority, per cent
    controls::TextBox txtLean{*this, "txtLean"};
    controls::CheckBox chkCarry{*this, "chkCarry"};
    controls::ControlArray<controls::Label> lblZone{*this, "lblZone", static_cast<int>(SteadyChoices::kZones)};
    controls::ControlArray<controls::TextBox> txtDelay{*this, "txtDelay", static_cast<int>(SteadyChoices::kZones)};
    controls::ListBox lstSamples{*this, "lstSamples"};  // how many were used, and rejected for what
    controls::Label lblReasons{*this, "lblReasons"};    // why samples were rejected in that cell
    controls::PictureBox picErrors{*this, "picErrors"};
    controls::Label lblErrors{*this, "lblErrors"};  // the same in words
    controls::CommandButton btnPutBack{*this, "btnPutBack"};
    controls::CommandButton btnNewBaseline{*this, "btnNewBaseline"};
    controls::Label lblNote{*this, "lblNote"};  // what came of the last order
    controls::Timer Timer1{*this, "Timer1", true, 500};

    // The tuner goes to another window: what is typed in the box with the focus is taken.
    void leaveBox();

protected:
    void Form_Load() override;
    // F8 puts the fuel map back to the baseline.
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;

private:
    void describe();
    void connect();
    void showChoices();
    void showNumber(controls::TextBox& box, double number, bool emptyForZero);
    void connectBox(controls::TextBox& box, controls::Property<double>& number, double most);
    void putBack();
    void showState();
    void showSamples();
    void showErrors();
    void drawPlot();
    void take(controls::TextBox& box, controls::Property<double>& number, double most);

    SteadyTuner& steady_;
    const core::SharedTables& tables_;
    double drawnTo_ = 0.0;  // seconds of the last point of the plot; negative without one
};

}  // namespace korvane::maps
