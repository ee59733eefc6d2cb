// Draws a trend table on a picture box: value grid, minutes, legend and five lines, the newest sample at the right.
#pragma once

#include <array>
#include <cstdint>

#include "controls/PictureBox.h"
#include "trend/TrendTable.h"

namespace korvane::trend {

class cTrendline {  // NOLINT(readability-identifier-naming)
public:
    std::int32_t DrawPoints = 300;  // kept, not used by the draw
    std::int16_t maxY = 100;        // value at the top of the plot
    std::int16_t minY = 0;          // negative: a tenth of the plot's height is kept free below zero
    std::int16_t Resolution = 10;   // steps of the value grid
    std::int16_t maxX = 300;        // rows across the plot
    bool ShowLimits = false;        // other colours
    bool AutoScale = false;         // maxY follows the largest value on show
    controls::PictureBox* PicBox = nullptr;

    // Draws in the surface's twips. A failure (a plot of more than 32767 twips, a value too large for the scale) ends
    // this draw where it stands and is not reported; the next draw tries again.
    void DrawTrend(const TrendTable& table, bool rightScale);

private:
    // The plot's place on the surface, twips.
    struct Geometry {
        int left, right, top, bottom;
        int zeroLift;
        [[nodiscard]] int width() const { return right - left; }
        [[nodiscard]] int height() const { return bottom - top; }
    };

    void draw(const TrendTable& table, bool rightScale);
    void scaleTo(const TrendTable& table);
    [[nodiscard]] Geometry geometry() const;
    void drawValueGrid(const Geometry& plot);
    void drawRightScale(const Geometry& plot);
    void drawMinutes(const Geometry& plot);
    void drawLegend(const Geometry& plot, const TrendTable& table, int offset);
    // The place of each row, the newest on the right; the same for all series.
    using Columns = std::array<std::int16_t, TrendTable::kLastRow>;
    [[nodiscard]] Columns columns(const Geometry& plot) const;
    void drawLine(const Geometry& plot, const Columns& xs, const TrendTable& table, int series);
    [[nodiscard]] controls::Color colorOf(int series) const;
};

}  // namespace korvane::trend
