#include "trend/cTrendline_New.h"

#include <algorithm>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"
#include "trend/TableDraw.h"

namespace korvane::trend {

namespace {

using logs::CellReading;
using platform::RuntimeError;

constexpr int kLastLine = 4;  // the series whose cells are read in another way
constexpr double kRowSteps = 10;
constexpr int kFromHeight = 700;  // of the notes above the plot's lower edge
constexpr int kToHeight = 400;

constexpr CellReading readingOf(int series) {
    return series == kLastLine ? CellReading::Val : CellReading::Number;
}

// The row so many further; RuntimeError 6 for one that 32 bits can't hold.
std::int32_t shifted(std::int32_t row, int rows) {
    return core::toInt32(static_cast<double>(row) + rows);
}

[[noreturn]] void fail(int number) {
    if (number == platform::kErrorSubscript) {
        platform::raiseSubscript();
    }
    if (number == platform::kErrorTypeMismatch) {
        platform::raiseTypeMismatch();
    }
    platform::raiseOverflow();
}

// A row that no log has fails, and the names in row 0 count as 0.
double valueAt(const logs::clsTXTdata& reader, std::int32_t column, CellReading reading, std::int32_t row) {
    if (row == 0) {
        return 0;
    }
    if (reading == CellReading::Number) {
        return static_cast<float>(reader.number(column, row));
    }
    static_cast<void>(reader.Data(column, row));
    const auto& values = reader.column(column, reading).values;
    return static_cast<std::size_t>(row) < values.size() ? values[static_cast<std::size_t>(row)] : 0;
}

}  // namespace

void cTrendline_New::DrawSQLTrend(const logs::clsTXTdata& reader, const LogColumns& columns, bool rightScale) {
    guarded("Error: cDrawSQLTrend ", [&] { drawLog(reader, columns, rightScale); });
}

void cTrendline_New::DrawTrend(const TrendTable& table, bool rightScale) {
    guarded("Error: cDrawTrend ", [&] {
        begin(rightScale, ToRight, [&] { return peakOfTable(table, maxX); });
        const TableLook look{ShowValue, XTitleShow, XTitleScale, static_cast<double>(XTitleKerroin), XTitleEnd};
        drawTable(plot_, table.seen(), maxX, look, rightScale);
    });
}

template <class Draw>
void cTrendline_New::guarded(const char* failure, Draw draw) {
    try {
        draw();
    } catch (const RuntimeError& error) {
        if (tellsFailures) {
            dialogs_.show({"Korvane Tuner", std::string(failure) + error.what(), platform::MessageIcon::Exclamation});
        }
    }
    if (PicBox != nullptr) {
        PicBox->drawn();
    }
}

template <class Peak>
void cTrendline_New::begin(bool rightScale, bool toRight, Peak peak) {
    constexpr int kMargin = 10;  // that the scale may add
    if (PicBox == nullptr) {
        platform::raiseObjectNotSet();
    }
    if (AutoScale) {
        maxY = scaleFor(core::toInt32(peak() + kMargin) - kMargin, maxY);
    }
    maxY = maxY == 0 ? kUsualMaxY : maxY;
    Resolution = Resolution == 0 ? kUsualResolution : Resolution;
    maxX = maxX == 0 ? kUsualMaxX : maxX;
    PicBox->ForeColor = controls::kWhite;
    plot_.begin(*PicBox, {maxY, minY, Resolution, maxX, ShowLimits, toRight}, rightScale);
}

void cTrendline_New::drawLog(const logs::clsTXTdata& reader, const LogColumns& columns, bool rightScale) {
    begin(rightScale, false, [&] { return peakOfLog(reader, columns); });
    plot_.drawValueGrid();
    if (rightScale) {
        plot_.drawRightScale();
    }
    drawRowNumbers();
    plot_.drawFrame();
    for (int series = 0; series < kPlotSeries; ++series) {
        if (const auto column = columns[static_cast<std::size_t>(series)]; column != 0) {
            drawSeries(reader, column, series);
        }
    }
}

double cTrendline_New::peakOfLog(const logs::clsTXTdata& reader, const LogColumns& columns) {
    double highest = 0;
    for (int series = 0; series < kPlotSeries; ++series) {
        if (const auto column = columns[static_cast<std::size_t>(series)]; column != 0) {
            const auto rows = rowsOf(reader, column, series, firstRow, shifted(lastRow, -2));
            if (rows.failure != 0) {
                fail(rows.failure);
            }
            highest = std::max(highest, peakOf(rows.values));
        }
    }
    return highest;
}

// The label says the row's number, with a fraction where the step has one. A step of nothing would never come to the
// left edge.
void cTrendline_New::drawRowNumbers() {
    const double step = (maxX - 1) / kRowSteps;
    for (int i = 0; i * step <= maxX && (i == 0 || step > 0); ++i) {
        plot_.drawRowLine(i * step, core::numberText(firstRow + 1.0 + i * step).view());
    }
    plot_.drawNote(kFromHeight, "from " + std::to_string(firstRow));
    plot_.drawNote(kToHeight, "to " + std::to_string(lastRow) + ' ' + std::to_string(maxX));
}

void cTrendline_New::drawSeries(const logs::clsTXTdata& reader, std::int32_t column, int series) {
    plot_.drawLegend(reader.TData(column, 0), {}, series);
    constexpr int kFirst = 2;  // rows of the page that the line leaves out at its start
    const auto first = shifted(firstRow, kFirst);
    const auto last = shifted(lastRow, -1);
    if (last <= first) {
        return;
    }
    const auto rows = rowsOf(reader, column, series, first, last);
    if (rows.values.size() > 1) {
        plot_.drawSeries({rows.values, kFirst}, series);
    }
    if (rows.failure != 0) {
        fail(rows.failure);
    }
}

cTrendline_New::Rows cTrendline_New::rowsOf(const logs::clsTXTdata& reader, std::int32_t column, int series,
                                            std::int32_t first, std::int32_t last) {
    if (last < first) {
        return {};
    }
    if (first < 0) {
        return {{}, platform::kErrorSubscript};
    }
    const auto reading = readingOf(series);
    const auto& whole = reader.column(column, reading);
    const auto end = static_cast<std::size_t>(last) + 1;
    const bool isWhole = whole.failedRow == 0 || whole.failedRow > last;
    if (isWhole && end <= whole.values.size()) {
        return {std::span(whole.values).first(end).subspan(static_cast<std::size_t>(first)), 0};
    }
    return convertRows(first, last, [&](std::int32_t row) { return valueAt(reader, column, reading, row); });
}

// Row by row, for a page on which a cell is no number, and for rows behind the log.
template <class Value>
cTrendline_New::Rows cTrendline_New::convertRows(std::int32_t first, std::int32_t last, Value value) {
    rows_.clear();
    try {
        for (std::int32_t row = first; row <= last; ++row) {
            rows_.push_back(value(row));
        }
    } catch (const RuntimeError& error) {
        return {rows_, error.number()};
    }
    return {rows_, 0};
}

}  // namespace korvane::trend
