// Asks before edits that the ECU does not have are left behind.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

// How many cells of a map, or boxes of the misc block, the ECU does not have.
struct UnsentMap {
    std::string_view name;
    int cells;
    std::string_view one = "cell";  // what they are called
    std::string_view many = "cells";

    friend bool operator==(const UnsentMap&, const UnsentMap&) = default;
};

// "12 fuel cells and 1 PWM cell are not in the ECU". There must be some.
[[nodiscard]] std::string unsentText(const std::vector<UnsentMap>& maps);
// And behind that "2 settings boxes are not saved". There must be one of both.
[[nodiscard]] std::string unsentText(const std::vector<UnsentMap>& maps, int settingsBoxes);

// The maps of these windows that have such cells. Windows that show the same map share its cells.
[[nodiscard]] std::vector<UnsentMap> unsentMaps(const std::vector<PaneWindow*>& windows);

// The user closes these windows: whether they may go. Asks if there are such cells, unless the user has said not to ask
// again (preference "AskUnsent" 0). Without a user they may.
[[nodiscard]] bool mayLeaveUnsent(const std::vector<PaneWindow*>& windows);
// The same for the whole program, with the boxes of the settings window that were changed and not saved.
[[nodiscard]] bool mayLeaveUnsent(platform::Machine& machine, const std::vector<PaneWindow*>& windows,
                                  int settingsBoxes);

}  // namespace korvane::maps
