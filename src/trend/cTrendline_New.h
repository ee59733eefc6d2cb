// Draws a page of a log on a picture box: value grid, row numbers, legend and up to five lines, the page's first row at
// the right edge.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "controls/PictureBox.h"
#include "logs/clsTXTdata.h"
#include "platform/Dialogs.h"
#include "trend/Plot.h"
#include "trend/TrendTable.h"

namespace korvane::trend {

// The reader's column of each series; 0 is off.
using LogColumns = std::array<std::int32_t, kPlotSeries>;

class cTrendline_New {  // NOLINT(readability-identifier-naming)
public:
    explicit cTrendline_New(platform::Dialogs& dialogs) : dialogs_(dialogs) {}

    std::int32_t firstRow = 0;  // of the page
    std::int32_t lastRow = 0;
    std::int32_t DrawPoints = 300;  // kept, not used by the draw
    bool AutoScale = false;         // maxY follows the largest value on the page
    std::int32_t maxY = 100;        // value at the top of the plot
    std::int32_t minY = 0;          // negative: a tenth of the plot's height is kept free below zero
    std::int32_t Resolution = 10;   // steps of the value grid
    std::int32_t maxX = 300;        // rows across the plot
    bool ShowLimits = false;        // other colours
    // Of DrawTrend alone.
    bool ToRight = false;    // from the left edge rightwards
    bool ShowValue = true;   // the newest value of each series
    bool XTitleShow = true;  // labels on the time axis: rows by XTitleScale times XTitleKerroin, and XTitleEnd
    double XTitleScale = 60;
    std::string XTitleEnd = " min";  // up to 8 characters are shown
    float XTitleKerroin = 1;
    controls::PictureBox* PicBox = nullptr;
    bool tellsFailures = true;  // by a message

    // A failure (a cell that is no number, a row that no log has) ends the draw where it stands, with a message.
    void DrawSQLTrend(const logs::clsTXTdata& reader, const LogColumns& columns, bool rightScale);

    // Draws a table as cTrendline does. A failure ends the draw with a message.
    void DrawTrend(const TrendTable& table, bool rightScale);

    // Where the last draw stands on its surface.
    [[nodiscard]] const PlotFrame& frame() const { return plot_.frame(); }

private:
    // The values of a series' rows, up to the first that has none.
    struct Rows {
        std::span<const double> values;
        int failure = 0;  // why they end, 0 if they are all there
    };

    template <class Draw>
    void guarded(const char* failure, Draw draw);
    void drawLog(const logs::clsTXTdata& reader, const LogColumns& columns, bool rightScale);
    // With AutoScale to the highest value, which `peak` finds.
    template <class Peak>
    void begin(bool rightScale, bool toRight, Peak peak);
    [[nodiscard]] double peakOfLog(const logs::clsTXTdata& reader, const LogColumns& columns);
    void drawRowNumbers();
    void drawSeries(const logs::clsTXTdata& reader, std::int32_t column, int series);
    // `first` to `last`; lent until the next call.
    [[nodiscard]] Rows rowsOf(const logs::clsTXTdata& reader, std::int32_t column, int series, std::int32_t first,
                              std::int32_t last);
    template <class Value>
    [[nodiscard]] Rows convertRows(std::int32_t first, std::int32_t last, Value value);

    platform::Dialogs& dialogs_;
    Plot plot_;
    std::vector<double> rows_;
};

}  // namespace korvane::trend
