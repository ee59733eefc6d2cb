// The files of lambda setpoints.
#pragma once

#include <string>

#include "maps/panes/Analysis.h"

namespace korvane::maps {

class PaneWindow;

class SetpointFiles {
public:
    SetpointFiles(PaneWindow& window, Analyser& analyser) : window_(window), analyser_(analyser) {}

    // Each asks for a file first.
    void save();
    void load();
    // As load() with this path for an answer.
    void load(const std::string& path);

private:
    PaneWindow& window_;
    Analyser& analyser_;
};

}  // namespace korvane::maps
