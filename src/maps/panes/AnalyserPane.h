// The analyser: its boxes, the grid of means and targets, and the files of targets.
#pragma once

#include <string>
#include <vector>

#include "maps/grid/SetpointFiles.h"
#include "maps/panes/MapPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

class AnalyserPane : public MapPane {
public:
    // `resting` are the buttons that are disabled while the analyser is shown.
    AnalyserPane(PaneWindow& window, std::vector<controls::CommandButton*> resting);

    controls::Frame FrameInjAnalys;
    MapGrid analys;  // txtInjAnalys, lblRpmIA, lblMapIA
    controls::CheckBox chkInjAnal, chkUseTuningAgent, chkSteadyAgent, chkSimplemode, chkModifyInjSetpoint;
    controls::Image imgAgentLed;
    controls::CommandButton btnSaveLambdaSetpoint, btnloadLambdaSetpoint;

    // Opens the window of the steady agent.
    void showSteady();

    // Shows the analyser's targets, and loads them as btnloadLambdaSetpoint does with this path for an answer.
    void openSetpoints(const std::string& path);

    // Every cell shows the default target.
    void fillTargets();
    // Shows means by colour, or targets while they are modified.
    void paint();

    [[nodiscard]] MapGrid* paneGrid() override { return &analys; }
    void loadPane(std::int32_t features) override;
    void tickPane() override;
    [[nodiscard]] std::string cellStatus(int cell) override;

protected:
    // Shows the analyser's frame, or the others again.
    virtual void showAnalyserPane(bool shown) = 0;

private:
    void describe();
    void connect();
    void begin();
    void end();
    void showBoxes(bool shown);
    void steadyClicked();
    void enableMapButtons(bool enabled);
    void enableFiles(bool enabled);
    [[nodiscard]] double meanOf(int cell) const;
    [[nodiscard]] std::string steadyWords(int cell) const;
    [[nodiscard]] std::string cellTip(int cell) const;
    void showTarget(controls::TextBox& box);
    void showMean(controls::TextBox& box, int cell);
    void keyDown(int cell, int keyCode);
    void stepTarget(int cell, bool up);

    Analyser& analyser_;
    SetpointFiles files_;
    std::vector<controls::CommandButton*> resting_;
};

}  // namespace korvane::maps
