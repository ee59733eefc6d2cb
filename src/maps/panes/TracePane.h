// The trace that the mark of the engine may leave.
#pragma once

#include <string_view>
#include <vector>

#include "maps/panes/EnginePlacePane.h"

namespace korvane::maps {

class TracePane : public EnginePlacePane {
public:
    TracePane(PaneWindow& window, std::string_view caption, std::vector<MapGrid*> grids);

    controls::CheckBox chkTrace;

private:
    [[nodiscard]] bool leavesTrace() const override { return chkTrace.Value == 1; }
    void clearTrace();
};

}  // namespace korvane::maps
