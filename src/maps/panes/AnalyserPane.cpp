#include "maps/panes/AnalyserPane.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Numbers.h"
#include "maps/grid/CellFace.h"
#include "maps/grid/StatusWords.h"
#include "maps/steady/SteadyTuner.h"

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

AnalyserPane::AnalyserPane(PaneWindow& window, std::vector<controls::CommandButton*> resting)
    : MapPane(window),
      FrameInjAnalys(window, "FrameInjAnalys"),
      analys(window, {"txtInjAnalys", "lblRpmIA", "lblMapIA"}, window.geometry, FrameInjAnalys),
      chkInjAnal(window, "chkInjAnal"),
      chkUseTuningAgent(window, "chkUseTuningAgent"),
      chkSteadyAgent(window, "chkSteadyAgent"),
      chkSimplemode(window, "chkSimplemode"),
      chkModifyInjSetpoint(window, "chkModifyInjSetpoint"),
      imgAgentLed(window, "imgAgentLed"),
      btnSaveLambdaSetpoint(window, "btnSaveLambdaSetpoint"),
      btnloadLambdaSetpoint(window, "btnloadLambdaSetpoint"),
      analyser_(window.context().analyser),
      files_(window, analyser_),
      resting_(std::move(resting)) {
    describe();
    connect();
}

void AnalyserPane::describe() {
    FrameInjAnalys.Caption = "Injection analyser [lambda]";
    chkInjAnal.Caption = "Show Injection analyser";
    chkUseTuningAgent.Caption = "Use Tuning Agent";
    chkSteadyAgent.Caption = "Steady agent";
    chkSimplemode.Caption = "Simple mode";
    chkModifyInjSetpoint.Caption = "Modify lambda setpoints";
    btnSaveLambdaSetpoint.Caption = "Save Lambda";
    btnloadLambdaSetpoint.Caption = "Load Lambda";
    imgAgentLed.Shown = controls::Picture::Grey;
    showBoxes(false);
    enableFiles(false);
}

void AnalyserPane::connect() {
    chkInjAnal.Click = [this] { chkInjAnal.Value == 1 ? begin() : end(); };
    chkUseTuningAgent.Click = [this] {
        if (chkUseTuningAgent.Value == 1) {
            chkSteadyAgent.Value = 0;
            paneWindow().context().eeprom.announceStore("tuning agent", {core::Overwritten::Part::Fuel});
        }
        analyser_.setAgentEnable(chkUseTuningAgent.Value == 1);
    };
    analys.tip = [this](int cell) { return cellTip(cell); };
    chkSteadyAgent.Click = [this] { steadyClicked(); };
    chkSimplemode.Click = [this] { analyser_.setSimpleMode(chkSimplemode.Value == 1); };
    btnSaveLambdaSetpoint.Click = [this] { files_.save(); };
    btnloadLambdaSetpoint.Click = [this] { files_.load(); };
    for (int cell = 0; cell < analys.geometry.cells(); ++cell) {
        analys(cell).KeyDown = [this, cell](int keyCode, int) { keyDown(cell, keyCode); };
    }
}

void AnalyserPane::loadPane(std::int32_t) {
    analys.place();
    fillTargets();
}

// Only one of the two agents runs. An untick is also how the box follows an agent that has stopped by itself.
void AnalyserPane::steadyClicked() {
    auto* const steady = paneWindow().context().steady;
    if (chkSteadyAgent.Value == 1) {
        chkUseTuningAgent.Value = 0;
        paneWindow().context().eeprom.announceStore("steady agent", {core::Overwritten::Part::Fuel});
        if (steady == nullptr || !steady->start(analys.geometry, &paneWindow())) {
            chkSteadyAgent.Value = 0;
        }
    } else if (steady != nullptr && steady->isOn(&paneWindow())) {
        steady->stop();
    }
}

void AnalyserPane::showSteady() {
    const auto* const steady = paneWindow().context().steady;
    if (steady != nullptr && steady->openWindow) {
        steady->openWindow();
    }
}

void AnalyserPane::openSetpoints(const std::string& path) {
    for (auto* const box : {&chkInjAnal, &chkModifyInjSetpoint}) {
        if (box->Value == 0) {
            box->press();
        }
    }
    files_.load(path);
}

void AnalyserPane::tickPane() {
    if (auto* const steady = paneWindow().context().steady; steady != nullptr && !steady->isOn(&paneWindow())) {
        chkSteadyAgent.Value = 0;
    }
    if (chkInjAnal.Value == 1) {
        paint();
    }
}

std::string AnalyserPane::cellStatus(int cell) {
    const double mean = meanOf(cell);
    return "Air-fuel ratio, " + placeWords(analys.geometry, cell) + ": target " + analys(cell).ToolTipText.get() +
           (mean == 0.0 ? "" : ", measured " + core::textOf(mean)) + steadyWords(cell);
}

std::string AnalyserPane::steadyWords(int cell) const {
    const auto* const steady = paneWindow().context().steady;
    const std::string words = steady != nullptr ? steady->cellWords(cell) : std::string();
    return words.empty() ? words : "; steady agent: " + words;
}

std::string AnalyserPane::cellTip(int cell) const {
    const auto* const steady = paneWindow().context().steady;
    const std::string words = steady != nullptr ? steady->cellWords(cell) : std::string();
    if (words.empty()) {
        return words;
    }
    const auto reasons = steady->cellReasons(cell);
    return "Steady agent: " + words + (reasons.empty() ? "" : "\nRejected while the engine ran here: " + reasons);
}

// Cut to two decimals; 0 for a cell without samples.
double AnalyserPane::meanOf(int cell) const {
    return static_cast<double>(std::floor(analyser_.LambdaAvg(cell) * 100.0F)) / 100.0;
}

void AnalyserPane::fillTargets() {
    analys.fill.NeverRead = false;
    for (auto& cell : analys.cells) {
        cell.Text = kDefaultTarget;
        cell.ToolTipText = kDefaultTarget;
    }
}

void AnalyserPane::begin() {
    analyser_.ClearTables();
    showAnalyserPane(true);
    enableMapButtons(false);
    showBoxes(true);
    imgAgentLed.Shown = controls::Picture::Grey;
    imgAgentLed.Left = kLampPlace;
    imgAgentLed.Top = kLampPlace;
    analyser_.setLogData(true);
    enableFiles(true);
}

void AnalyserPane::end() {
    showAnalyserPane(false);
    enableMapButtons(true);
    showBoxes(false);
    chkUseTuningAgent.Value = 0;
    chkSteadyAgent.Value = 0;
    analyser_.setAgentEnable(false);
    analyser_.setLogData(false);
    enableFiles(false);
}

void AnalyserPane::showBoxes(bool shown) {
    chkModifyInjSetpoint.Visible = shown;
    chkUseTuningAgent.Visible = shown;
    chkSteadyAgent.Visible = shown;
    chkSimplemode.Visible = shown;
    imgAgentLed.Visible = shown;
}

// When the analyser is closed all buttons are enabled again, also those for functions that the ECU does not have.
void AnalyserPane::enableMapButtons(bool enabled) {
    for (auto* button : resting_) {
        button->Enabled = enabled;
    }
}

void AnalyserPane::enableFiles(bool enabled) {
    btnloadLambdaSetpoint.Enabled = enabled;
    btnSaveLambdaSetpoint.Enabled = enabled;
}

void AnalyserPane::paint() {
    const bool targets = chkModifyInjSetpoint.Value == 1;
    for (int cell = 0; cell < analys.geometry.cells(); ++cell) {
        if (targets) {
            showTarget(analys(cell));
        } else {
            showMean(analys(cell), cell);
        }
    }
}

void AnalyserPane::showTarget(controls::TextBox& box) {
    box.Text = box.ToolTipText.get();
    box.BackColor = controls::kWhite;
}

// A cell without samples stays white.
void AnalyserPane::showMean(controls::TextBox& box, int cell) {
    const double mean = meanOf(cell);
    box.Text = core::numberText(mean).view();
    box.BackColor = mean == 0.0 ? controls::kWhite : colorOf(analyser_.Proposal(cell));
}

void AnalyserPane::keyDown(int cell, int keyCode) {
    if (const auto next = analys.beside(cell, keyCode)) {
        paneWindow().setFocus(&analys(*next));
    } else if (keyCode == controls::kKeyPlus || keyCode == controls::kKeyMinus) {
        stepTarget(cell, keyCode == controls::kKeyPlus);
    }
}

void AnalyserPane::stepTarget(int cell, bool up) {
    auto& box = analys(cell);
    const double old = core::val(box.ToolTipText.get());
    const double target = up ? (old >= kHighestTarget ? kHighestTarget : old + kTargetStep)
                             : (old <= kLowestTarget ? kLowestTarget : old - kTargetStep);
    const Unlocked unlocked(box);
    box.ToolTipText = core::numberText(target).view();
    box.Text = box.ToolTipText.get();
    analyser_.Setpoint(static_cast<float>(target), cell);
}

}  // namespace korvane::maps
