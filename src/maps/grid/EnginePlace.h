// Where in the maps the engine runs now.
#pragma once

#include <optional>

#include "maps/grid/MapGeometry.h"
#include "platform/EventPump.h"

namespace korvane::maps {

class EnginePlace {
public:
    // A live frame has named a cell.
    void heard(int cell, platform::Micros now);
    // The cell; nothing for one outside the grid, and when the last frame is older than three polls or a second,
    // whichever is longer.
    [[nodiscard]] std::optional<int> cell(MapGeometry shape, platform::Micros now, int pollMilliseconds) const;

private:
    struct Heard {
        int cell;
        platform::Micros at;
    };
    std::optional<Heard> last_;
};

}  // namespace korvane::maps
