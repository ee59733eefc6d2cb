// The rules by which each of the three map grids is edited. The pane adds the image and what follows an edit.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "maps/grid/GridEditor.h"

namespace korvane::maps {

// + on a fuel cell where the injection offset counts as map counts. In a block what comes to 255 counts or more with
// the offset becomes what comes to just 255, even if that is less; a single step asks for exactly 255.
[[nodiscard]] std::uint8_t raisedWithOffset(std::uint8_t byte, double offset);
[[nodiscard]] std::uint8_t steppedWithOffset(std::uint8_t byte, double offset);

// The injection offset in counts; nothing where it counts as time.
using CountOffset = std::function<std::optional<double>()>;

[[nodiscard]] GridRules fuelRules(CountOffset offset);
[[nodiscard]] GridRules ignitionRules(Pointing pointing);
[[nodiscard]] GridRules pwmRules();

}  // namespace korvane::maps
