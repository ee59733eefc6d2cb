// The files of lambda setpoints.
#pragma once

#include "maps/panes/Analysis.h"

namespace korvane::maps {

class PaneWindow;

class SetpointFiles {
public:
    SetpointFiles(PaneWindow& window, Analyser& analyser) : window_(window), analyser_(analyser) {}

    // Each asks for a file first.
    void save();
    void load();

private:
    PaneWindow& window_;
    Analyser& analyser_;
};

}  // namespace korvane::maps
