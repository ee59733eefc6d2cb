#include "trend/TableDraw.h"

#include <algorithm>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::trend {

namespace {

constexpr int kRowsBetweenLines = 60;
constexpr std::size_t kLongestUnit = 8;

core::NumberText newestOf(const TrendTable& table, int series) {
    core::NumberText newest;
    if (table.hasSamples(series)) {
        newest = core::numberText(table.value(series, TrendTable::kNewestRow));
    }
    newest.append(" ( ");
    newest.append(std::string_view(table.unit(series)).substr(0, kLongestUnit));
    newest.append(" )");
    return newest;
}

template <class Action>
void forNamedSeries(const TrendTable& table, Action action) {
    for (int series = 0; series < kPlotSeries; ++series) {
        if (!table.name(series).empty()) {
            action(series);
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

void drawLine(Plot& plot, const TrendTable& table, int maxX, int series) {
    const int last = std::min(maxX - 1, TrendTable::kLastRow);
    plot.drawSeries({table.rows(series, TrendTable::kNewestRow, last)}, series);
    if (maxX - 1 > TrendTable::kLastRow) {
        platform::raiseSubscript();
    }
}

}  // namespace

double peakOfTable(const TrendTable& table, int maxX) {
    double highest = 0;
    if (maxX - 2 >= TrendTable::kNewestRow) {
        forNamedSeries(table, [&](int series) {
            highest = std::max(highest, peakOf(table.rows(series, TrendTable::kNewestRow, maxX - 2)));
        });
    }
    return highest;
}

void drawTable(Plot& plot, const TrendTable& table, int maxX, const TableLook& look, bool rightScale) {
    plot.drawValueGrid();
    if (rightScale) {
        plot.drawRightScale();
    }
    drawTimes(plot, maxX, look);
    plot.drawFrame();
    forNamedSeries(table, [&](int series) {
        const auto newest = look.newestValues ? newestOf(table, series) : core::NumberText();
        plot.drawLegend(table.name(series), newest.view(), series);
    });
    if (maxX - 2 >= TrendTable::kNewestRow) {
        forNamedSeries(table, [&](int series) { drawLine(plot, table, maxX, series); });
    }
}

}  // namespace korvane::trend
