// Which rows of a log the viewer shows, and how the page turns.
#pragma once

#include <cstdint>

namespace korvane::trend {

// Row numbers as the user turned to them: they may lie outside the log where a page is longer than it.
struct LogPage {
    std::int32_t pageStart = 0;   // the page's first row
    std::int32_t pageEnd = 0;     // its last row
    std::int32_t pagePoints = 0;  // rows on it
    bool operator==(const LogPage&) const = default;
};

// `points` is the number of rows that the user has chosen for a page, `maxRows` the rows of the log. Each function
// raises RuntimeError 6 for a row that 32 bits can't hold.

// The page after a choice of its length.
[[nodiscard]] LogPage pageOf(const LogPage& page, std::int32_t points, std::int32_t maxRows);
[[nodiscard]] LogPage nextPage(const LogPage& page, std::int32_t points, std::int32_t maxRows);
[[nodiscard]] LogPage previousPage(const LogPage& page, std::int32_t points, std::int32_t maxRows);

}  // namespace korvane::trend
