// The cells of a line of a log.
#pragma once

#include <cstddef>
#include <string_view>

namespace korvane::logs {

// Takes the blanks in front and the cell behind them off `rest`. Empty if there is no cell left.
[[nodiscard]] std::string_view takeCell(std::string_view& rest);

[[nodiscard]] std::size_t countCells(std::string_view line);

// The cell of a column, counted by blanks; empty if the line has fewer. Quick where the cells are at the places where a
// writer puts them.
[[nodiscard]] std::string_view cellOf(std::string_view line, int column);

}  // namespace korvane::logs
