#include "trend/cTrendline.h"

#include <algorithm>
#include <string_view>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::trend {

namespace {

constexpr int kRowsPerMinute = 60;
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

}  // namespace

void cTrendline::DrawTrend(const TrendTable& table, bool rightScale) {
    try {
        draw(table, rightScale);
    } catch (const platform::RuntimeError&) {  // NOLINT(bugprone-empty-catch): the next draw tries again
    }
    if (PicBox != nullptr) {
        PicBox->drawn();
    }
}

void cTrendline::draw(const TrendTable& table, bool rightScale) {
    if (PicBox == nullptr) {
        throw platform::RuntimeError(platform::kErrorObjectNotSet, "Object variable not set");
    }
    if (AutoScale) {
        scaleTo(table);
    }
    maxY = maxY == 0 ? kUsualMaxY : maxY;
    Resolution = Resolution == 0 ? kUsualResolution : Resolution;
    maxX = maxX == 0 ? kUsualMaxX : maxX;
    plot_.begin(*PicBox, {maxY, minY, Resolution, maxX, ShowLimits}, rightScale);
    plot_.drawValueGrid();
    if (rightScale) {
        plot_.drawRightScale();
    }
    drawMinutes();
    plot_.drawFrame();
    forNamedSeries(table,
                   [&](int series) { plot_.drawLegend(table.name(series), newestOf(table, series).view(), series); });
    if (maxX - 2 >= TrendTable::kNewestRow) {
        forNamedSeries(table, [&](int series) { drawLine(table, series); });
    }
}

void cTrendline::scaleTo(const TrendTable& table) {
    double highest = 0;
    if (maxX - 2 >= TrendTable::kNewestRow) {
        forNamedSeries(table, [&](int series) {
            highest = std::max(highest, peakOf(table.rows(series, TrendTable::kNewestRow, maxX - 2)));
        });
    }
    maxY = core::toInt16(scaleFor(core::toInt16(highest), maxY));
}

void cTrendline::drawMinutes() {
    for (int i = 0; i <= maxX; i += kRowsPerMinute) {
        auto label = core::numberText(i / kRowsPerMinute);
        label.append(" min");
        plot_.drawRowLine(i, label.view());
    }
}

void cTrendline::drawLine(const TrendTable& table, int series) {
    const int last = std::min(maxX - 1, TrendTable::kLastRow);
    plot_.drawSeries({table.rows(series, TrendTable::kNewestRow, last)}, series);
    if (maxX - 1 > TrendTable::kLastRow) {
        throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
    }
}

}  // namespace korvane::trend
