#include "trend/TableDraw.h"

#include <algorithm>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::trend {

namespace {

constexpr int kRowsBetweenLines = 60;
constexpr std::size_t kLongestUnit = 8;

core::NumberText newestOf(const TrendSeries& series) {
    core::NumberText newest;
    if (series.hasSamples) {
        newest = core::numberText(series.samples.front());
    }
    newest.append(" ( ");
    newest.append(series.unit.substr(0, kLongestUnit));
    newest.append(" )");
    return newest;
}

template <class Action>
void forNamedSeries(std::span<const TrendSeries> table, Action action) {
    for (int series = 0; series < kPlotSeries; ++series) {
        if (const auto& row = table[static_cast<std::size_t>(series)]; !row.name.empty()) {
            action(row, series);
        }
    }
}

void drawTimes(Plot& plot, int maxX, const TableLook& look) {
    for (int i = 0; i <= maxX; i += kRowsBetweenLines) {
        core::NumberText label;
        if (look.times) {
            label = core::numberText(i / look.rowsOfUnit * look.factor);
            label.append(look.unit.substr(0, kLongestUnit));
        }
        plot.drawRowLine(i, label.view());
    }
}

void drawLine(Plot& plot, std::span<const double> samples, int maxX, int series) {
    const int last = std::min(maxX - 1, TrendTable::kLastRow);
    plot.drawSeries({samples.first(static_cast<std::size_t>(last - TrendTable::kNewestRow) + 1)}, series);
    if (maxX - 1 > TrendTable::kLastRow) {
        platform::raiseSubscript();
    }
}

}  // namespace

double peakOfTable(const TrendTable& table, int maxX) {
    double highest = 0;
    for (int series = 0; series < kPlotSeries && maxX - 2 >= TrendTable::kNewestRow; ++series) {
        if (!table.name(series).empty()) {
            highest = std::max(highest, table.peak(series, maxX - 2));
        }
    }
    return highest;
}

void drawTable(Plot& plot, std::span<const TrendSeries> table, int maxX, const TableLook& look, bool rightScale) {
    plot.drawValueGrid();
    if (rightScale) {
        plot.drawRightScale();
    }
    drawTimes(plot, maxX, look);
    plot.drawFrame();
    forNamedSeries(table, [&](const TrendSeries& row, int series) {
        const auto newest = look.newestValues ? newestOf(row) : core::NumberText();
        plot.drawLegend(row.name, newest.view(), series);
    });
    if (maxX - 2 >= TrendTable::kNewestRow) {
        forNamedSeries(table, [&](const TrendSeries& row, int series) { drawLine(plot, row.samples, maxX, series); });
    }
}

}  // namespace korvane::trend
