#include "maps/AnalyserPane.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Numbers.h"
#include "maps/CellFace.h"

namespace korvane::maps {

namespace {

constexpr const char* kDefaultTarget = "12.5";
constexpr int kLampPlace = 200;  // twips, left and top
constexpr double kTargetStep = 0.1;
constexpr double kHighestTarget = 16.0;
constexpr double kLowestTarget = 10.0;
constexpr float kOffTarget = 0.75F;  // from here on a cell turns from yellow to red

controls::Color colorOf(double red, double green) {
    const auto part = [](double value) { return static_cast<controls::Color>(std::clamp(value, 0.0, 255.0)); };
    return part(red) | part(green) << 8U;
}

// Green on target, through yellow, to red.
controls::Color colorOf(float proposal) {
    const float distance = std::fabs(proposal);
    return distance < kOffTarget ? colorOf(std::floor(distance * 250.0F + 23.0F), 255)
                                 : colorOf(255, std::floor(255.0F - distance * 70.0F));
}

}  // namespace

AnalyserPane::AnalyserPane(MapControls& window, const MapContext& context, std::function<void(bool)> showFrames)
    : window_(window), context_(context), showFrames_(std::move(showFrames)) {
    window_.chkInjAnal.Click = [this] { window_.chkInjAnal.Value == 1 ? begin() : end(); };
    window_.chkUseTuningAgent.Click = [this] {
        context_.analyser.setAgentEnable(window_.chkUseTuningAgent.Value == 1);
    };
    window_.chkSimplemode.Click = [this] { context_.analyser.setSimpleMode(window_.chkSimplemode.Value == 1); };
    for (int cell = 0; cell < window_.analys.geometry.cells(); ++cell) {
        window_.analys(cell).KeyDown = [this, cell](int keyCode, int) { keyDown(cell, keyCode); };
    }
}

void AnalyserPane::fillTargets() {
    for (auto& cell : window_.analys.cells) {
        cell.Text = kDefaultTarget;
        cell.ToolTipText = kDefaultTarget;
    }
}

void AnalyserPane::begin() {
    context_.analyser.ClearTables();
    showFrames_(true);
    enableMapButtons(false);
    showBoxes(true);
    window_.imgAgentLed.Shown = controls::Picture::Grey;
    window_.imgAgentLed.Left = kLampPlace;
    window_.imgAgentLed.Top = kLampPlace;
    context_.analyser.setLogData(true);
    enableFiles(true);
}

void AnalyserPane::end() {
    showFrames_(false);
    enableMapButtons(true);
    showBoxes(false);
    window_.chkUseTuningAgent.Value = 0;
    context_.analyser.setAgentEnable(false);
    context_.analyser.setLogData(false);
    enableFiles(false);
}

void AnalyserPane::showBoxes(bool shown) {
    window_.chkModifyInjSetpoint.Visible = shown;
    window_.chkUseTuningAgent.Visible = shown;
    window_.chkSimplemode.Visible = shown;
    window_.imgAgentLed.Visible = shown;
}

// When the analyser goes all four come back, also what the ECU does not offer.
void AnalyserPane::enableMapButtons(bool enabled) {
    for (auto* button : {&window_.btnReadIgn, &window_.btnWriteIgn, &window_.btnReadPWM, &window_.btnSavePWM}) {
        button->Enabled = enabled;
    }
}

void AnalyserPane::enableFiles(bool enabled) {
    window_.btnloadLambdaSetpoint.Enabled = enabled;
    window_.btnSaveLambdaSetpoint.Enabled = enabled;
}

void AnalyserPane::paint() {
    const bool targets = window_.chkModifyInjSetpoint.Value == 1;
    for (int cell = 0; cell < window_.analys.geometry.cells(); ++cell) {
        if (targets) {
            showTarget(window_.analys(cell));
        } else {
            showMean(window_.analys(cell), cell);
        }
    }
}

void AnalyserPane::showTarget(controls::TextBox& box) {
    box.Text = box.ToolTipText.get();
    box.BackColor = controls::kWhite;
}

// A cell without samples stays white.
void AnalyserPane::showMean(controls::TextBox& box, int cell) {
    const double mean = static_cast<double>(std::floor(context_.analyser.LambdaAvg(cell) * 100.0F)) / 100.0;
    box.Text = core::numberText(mean).view();
    box.BackColor = mean == 0.0 ? controls::kWhite : colorOf(context_.analyser.Proposal(cell));
}

void AnalyserPane::keyDown(int cell, int keyCode) {
    if (const auto next = window_.analys.beside(cell, keyCode)) {
        window_.setFocus(&window_.analys(*next));
    } else if (keyCode == controls::kKeyPlus || keyCode == controls::kKeyMinus) {
        stepTarget(cell, keyCode == controls::kKeyPlus);
    }
}

void AnalyserPane::stepTarget(int cell, bool up) {
    auto& box = window_.analys(cell);
    const double old = core::val(box.ToolTipText.get());
    const double target = up ? (old >= kHighestTarget ? kHighestTarget : old + kTargetStep)
                             : (old <= kLowestTarget ? kLowestTarget : old - kTargetStep);
    const Unlocked unlocked(box);
    box.ToolTipText = core::numberText(target).view();
    box.Text = box.ToolTipText.get();
    context_.analyser.Setpoint(static_cast<float>(target), cell);
}

}  // namespace korvane::maps
