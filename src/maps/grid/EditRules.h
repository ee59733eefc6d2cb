// The rules by which each of the three map grids is edited. The pane adds the image and what follows an edit.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "maps/grid/GridEditor.h"

namespace korvane::maps {

// + on a fuel cell where the injection offset counts as map counts. In a block, a cell whose sum with the offset is 255
// or more becomes 255 minus the offset, even if that is less than before; a single step stops only at a sum of exactly
// 255.
[[nodiscard]] std::uint8_t raisedWithOffset(std::uint8_t byte, double offset);
[[nodiscard]] std::uint8_t steppedWithOffset(std::uint8_t byte, double offset);

// The injection offset in counts; nothing where it counts as time.
using CountOffset = std::function<std::optional<double>()>;

[[nodiscard]] GridRules fuelRules(CountOffset offset);
[[nodiscard]] GridRules ignitionRules(Pointing pointing);
[[nodiscard]] GridRules pwmRules();

}  // namespace korvane::maps
