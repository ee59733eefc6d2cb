// The analyser's part of a map window: its boxes, and the grid of means and targets.
#pragma once

#include <functional>

#include "maps/MapContext.h"
#include "maps/MapControls.h"

namespace korvane::maps {

// Sets the clicks of chkInjAnal, chkUseTuningAgent and chkSimplemode and the keys of txtInjAnalys.
class AnalyserPane {
public:
    // `showFrames` is how the window brings the analyser's frame into view (true) and puts the others back (false).
    AnalyserPane(MapControls& window, const MapContext& context, std::function<void(bool)> showFrames);

    // Every cell shows the default target.
    void fillTargets();
    // Shows means by colour, or targets while they are modified; for the window's timer.
    void paint();

private:
    void begin();
    void end();
    void showBoxes(bool shown);
    void enableMapButtons(bool enabled);
    void enableFiles(bool enabled);
    void showTarget(controls::TextBox& box);
    void showMean(controls::TextBox& box, int cell);
    void keyDown(int cell, int keyCode);
    void stepTarget(int cell, bool up);

    MapControls& window_;
    const MapContext& context_;
    std::function<void(bool)> showFrames_;
};

}  // namespace korvane::maps
