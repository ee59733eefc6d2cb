// The cells that stand out in the 3D view, and those that are left out.
#pragma once

#include <vector>

#include "controls/Property.h"

namespace korvane::maps {

// Counted as in the map; kNoCell for none.
class Marks3D : public controls::Object {
public:
    static constexpr int kNoCell = -1;

    controls::Property<int> Engine{*this, kNoCell};  // the one that the engine runs in
    controls::Property<int> Focus{*this, kNoCell};   // the one that the keys change, if its map is on show
    // For each cell of the table on show whether it has no value yet. Empty where all have one.
    controls::Property<std::vector<bool>> Unread{*this};
};

}  // namespace korvane::maps
