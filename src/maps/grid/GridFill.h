// Whether a grid shows anything yet, and which of its cells do.
#pragma once

#include <cstddef>
#include <vector>

#include "controls/Property.h"

namespace korvane::maps {

class GridFill : public controls::Object {
public:
    // Until the first read, edit or load of a tune. The empty cells are no values of the ECU.
    controls::Property<bool> NeverRead{*this, true};
    // For each cell whether its 0 is no value: others of the map were read or edited, this one was not. Empty while
    // NeverRead, and where all cells have values.
    controls::Property<std::vector<bool>> Unread{*this};
    [[nodiscard]] bool isUnread(int cell) const {
        const auto at = static_cast<std::size_t>(cell);
        return NeverRead || (at < Unread.get().size() && Unread.get()[at]);
    }
};

}  // namespace korvane::maps
