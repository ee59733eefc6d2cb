// What the status line of a map window says at the moment.
#pragma once

#include <string>
#include <vector>

#include "maps/grid/StatusWords.h"

namespace korvane::maps {

class PaneWindow;

// Each empty where there is nothing to say.
struct MapStatus {
    std::string cell;     // of the cell with the focus
    std::string block;    // of a selected block, first that of the grid with the focus
    std::string store;    // what has become of what was sent of each map
    std::string unknown;  // of which maps it is not known whether the ECU has stored what it runs on
    std::string unread;   // what was overwritten that nobody had read, and what a send would overwrite so
    std::string unsent;   // how many edited cells of each map the ECU does not have, or has not stored
};

// What is not sent of the window's maps, and behind them of its other boxes.
[[nodiscard]] std::vector<UnsentOfMap> unsentOf(const PaneWindow& window);

// Says nothing at all while a number can't be drawn either.
[[nodiscard]] MapStatus statusOf(const PaneWindow& window);

}  // namespace korvane::maps
