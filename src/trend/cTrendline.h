// Draws a trend table on a picture box: value grid, minutes, legend and five lines, the newest sample at the right.
#pragma once

#include <array>
#include <cstdint>

#include "controls/PictureBox.h"
#include "trend/Plot.h"
#include "trend/TrendTable.h"

namespace korvane::trend {

class cTrendline {  // NOLINT(readability-identifier-naming)
public:
    std::int32_t DrawPoints = 300;  // not used
    std::int16_t maxY = 100;        // value at the top of the plot
    std::int16_t minY = 0;          // negative: a tenth of the plot's height is kept free below zero
    std::int16_t Resolution = 10;   // steps of the value grid
    std::int16_t maxX = 300;        // rows across the plot
    bool ShowLimits = false;        // other colours
    bool AutoScale = false;         // maxY follows the largest value on show
    controls::PictureBox* PicBox = nullptr;

    // Draws in the surface's twips. A failure (a plot of more than 32767 twips, a value too large for the scale) ends
    // this draw and is not reported; the next draw tries again.
    void DrawTrend(const TrendTable& table, bool rightScale);
    // The same, but the shapes are made when somebody looks at the picture, which must be settled before the table's
    // rows move and before PicBox is another one.
    void DrawTrendLater(const TrendTable& table, bool rightScale);

private:
    // A draw whose plot has its place.
    struct Draw {
        std::array<TrendSeries, TrendTable::kSeries> table;
        int maxX = 0;
        bool rightScale = false;
    };

    void place(const TrendTable& table, bool rightScale);
    void drawPlaced(controls::PictureBox& picture);
    void scaleTo(const TrendTable& table);

    Plot plot_;
    Draw placed_;
};

}  // namespace korvane::trend
