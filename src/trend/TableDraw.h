// What the plots of a trend table share: scale, legend, times and lines.
#pragma once

#include <span>
#include <string_view>

#include "trend/Plot.h"
#include "trend/TrendTable.h"

namespace korvane::trend {

// How a plot names what it shows.
struct TableLook {
    bool newestValues = true;  // below the names of the legend
    bool times = true;         // under the lines across the rows
    double rowsOfUnit = 60;    // a time is the rows up to it by this
    double factor = 1;         // and times this
    std::string_view unit = " min";
};

// The highest value of the named series' rows that a plot of `maxX` rows shows, at least 0.
[[nodiscard]] double peakOfTable(const TrendTable& table, int maxX);

// Behind Plot::begin(). Raises RuntimeError 9 for more rows than the table has, when it has drawn those.
void drawTable(Plot& plot, std::span<const TrendSeries> table, int maxX, const TableLook& look, bool rightScale);

}  // namespace korvane::trend
