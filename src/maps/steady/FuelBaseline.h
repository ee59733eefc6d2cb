// The fuel map from which the steady agent's authority counts.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/WallTime.h"

namespace korvane::maps {

// Whose map it is. Two ECUs that name themselves alike can't be told apart.
struct BaselineOwner {
    int type = 0;
    int version = 0;  // thousandths
    int columns = 0;  // of the map
    int rows = 0;

    bool operator==(const BaselineOwner&) const = default;
};

struct FuelBaseline {
    BaselineOwner owner;
    platform::WallTime time;
    std::vector<std::uint8_t> cells;  // row by row; may end before the map does

    bool operator==(const FuelBaseline&) const = default;
};

// Both empty where none is kept.
struct FoundBaseline {
    std::optional<FuelBaseline> baseline;
    std::string damage;  // in plain words what is wrong with the one that is kept
};

// Where baselines outlast the program. An empty function: nothing is kept.
struct BaselineKeeper {
    std::function<FoundBaseline(const BaselineOwner&)> load;
    // In plain words why it was not kept; empty if it was.
    std::function<std::string(const FuelBaseline&)> save;
};

}  // namespace korvane::maps
