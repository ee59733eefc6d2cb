#include "trend/cTrendline.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <string_view>

#include "core/Numbers.h"
#include "platform/RuntimeError.h"

namespace korvane::trend {

namespace {

using controls::Color;
using controls::Point;

constexpr int kLines = 5;  // of the table's six series
constexpr int kLeft = 500;
constexpr int kTop = 100;
constexpr int kBottomMargin = 300;
constexpr int kScaleLabelX = 50;
constexpr int kLabelShift = 85;
constexpr int kRightScaleGap = 10;
constexpr int kLegendGap = 50;
constexpr int kLegendGapRightScale = 400;
constexpr int kLegendStep = 350;
constexpr int kLegendValueStep = 150;
constexpr int kRowsPerMinute = 60;
constexpr Color kFrameColor = 0xF0F0F0;  // the button face, on a surface that knows no palette

constexpr std::array<Color, kLines> kColors{controls::kWhite, controls::kYellow, controls::kRed, controls::kCyan,
                                            controls::kMagenta};
constexpr std::array<Color, kLines> kLimitColors{controls::kWhite, controls::kRed, controls::kMagenta, controls::kRed,
                                                 controls::kMagenta};

Point pointAt(double x, double y) {
    return {core::toInt16(x), core::toInt16(y)};
}

// Adding this leaves a double's whole part, rounded half to even, in its low bits: a rounding that vectorises.
constexpr double kRounder = 6755399441055744.0;

std::int16_t rounded(double value) {
    return static_cast<std::int16_t>(std::bit_cast<std::uint64_t>(value + kRounder) & 0xFFFF);
}

// Four at a time, each with a maximum of its own, so that no step waits for the one before.
double largestOf(std::span<const double> values) {
    std::array<double, 4> largest{};
    std::size_t i = 0;
    for (; i + largest.size() <= values.size(); i += largest.size()) {
        for (std::size_t lane = 0; lane < largest.size(); ++lane) {
            largest[lane] = values[i + lane] > largest[lane] ? values[i + lane] : largest[lane];
        }
    }
    for (; i < values.size(); ++i) {
        largest[0] = std::max(largest[0], values[i]);
    }
    return *std::max_element(largest.begin(), largest.end());
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
    maxY = maxY == 0 ? std::int16_t{100} : maxY;
    Resolution = Resolution == 0 ? std::int16_t{10} : Resolution;
    maxX = maxX == 0 ? std::int16_t{600} : maxX;
    const Geometry plot = geometry();
    PicBox->surface().clear();
    drawValueGrid(plot);
    if (rightScale) {
        drawRightScale(plot);
    }
    drawMinutes(plot);
    PicBox->surface().box(pointAt(plot.left, plot.top), pointAt(plot.right, plot.bottom), kFrameColor);
    drawLegend(plot, table, rightScale ? kLegendGapRightScale : kLegendGap);
    const Columns xs = columns(plot);
    for (int series = 0; series < kLines; ++series) {
        if (!table.name(series).empty()) {
            drawLine(plot, xs, table, series);
        }
    }
}

// Grows at once, and shrinks only past a margin, so that the scale does not flicker.
void cTrendline::scaleTo(const TrendTable& table) {
    double highest = 0;
    for (int series = 0; series < kLines; ++series) {
        if (table.name(series).empty() || maxX - 2 < TrendTable::kNewestRow) {
            continue;
        }
        highest = std::max(highest, largestOf(table.rows(series, TrendTable::kNewestRow, maxX - 2)));
    }
    const int peak = core::toInt16(highest);
    if (peak + 5 >= maxY || peak < maxY - 15) {
        maxY = core::toInt16(peak + 10);
    }
}

cTrendline::Geometry cTrendline::geometry() const {
    Geometry plot{};
    plot.left = kLeft;
    plot.right = core::toInt16(PicBox->Width * 0.8);
    plot.top = kTop;
    plot.bottom = core::toInt16(static_cast<double>(PicBox->Height) - kBottomMargin);
    plot.zeroLift = minY < 0 ? core::toInt16(plot.height() / 10.0) : 0;
    return plot;
}

void cTrendline::drawValueGrid(const Geometry& plot) {
    auto& surface = PicBox->surface();
    const double step = static_cast<double>(maxY) / Resolution;
    const int first = plot.zeroLift != 0 ? -1 : 0;
    for (int i = first; step > 0 && i * step < maxY; ++i) {
        const double v = i * step;
        const double y = plot.bottom + plot.zeroLift - v / maxY * plot.height();
        surface.line(pointAt(plot.left, y), pointAt(plot.right, y), controls::kDarkGrey);
        surface.text(pointAt(kScaleLabelX, y - kLabelShift), core::numberText(core::toInt(v)).view(), controls::kWhite);
    }
}

void cTrendline::drawRightScale(const Geometry& plot) {
    const double step = 100 / ((maxY - minY) / (static_cast<double>(maxY) / Resolution));
    for (int i = 0; step > 0 && i * step <= 100; ++i) {
        const double y = plot.bottom + plot.zeroLift - i * step / 100 * plot.height();
        PicBox->surface().text(pointAt(plot.right + kRightScaleGap, y - kLabelShift),
                               core::numberText(core::toInt(i * step)).view(), colorOf(1));
    }
}

void cTrendline::drawMinutes(const Geometry& plot) {
    auto& surface = PicBox->surface();
    for (int i = 0; i <= maxX; i += kRowsPerMinute) {
        const double x = plot.right - static_cast<double>(i) / maxX * plot.width();
        surface.line(pointAt(x, plot.top), pointAt(x, plot.bottom), controls::kDarkGrey);
        auto label = core::numberText(i / kRowsPerMinute);
        label.append(" min");
        surface.text(pointAt(x - kLabelShift, plot.bottom + kLabelShift), label.view(), controls::kWhite);
    }
}

void cTrendline::drawLegend(const Geometry& plot, const TrendTable& table, int offset) {
    auto& surface = PicBox->surface();
    const int x = plot.right + offset;
    double y = plot.top + plot.height() * 5 / 100.0;
    for (int series = 0; series < kLines; ++series) {
        if (table.name(series).empty()) {
            continue;
        }
        surface.text(pointAt(x, y), table.name(series), colorOf(series));
        core::NumberText newest;
        if (table.hasSamples(series)) {
            newest = core::numberText(table.value(series, TrendTable::kNewestRow));
        }
        newest.append(" ( ");
        newest.append(std::string_view(table.unit(series)).substr(0, 8));
        newest.append(" )");
        surface.text(pointAt(x, y + kLegendValueStep), newest.view(), colorOf(series));
        y += kLegendStep;
    }
}

cTrendline::Columns cTrendline::columns(const Geometry& plot) const {
    const double step = static_cast<double>(plot.width()) / maxX;
    Columns xs;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        xs[i] = rounded(plot.right - static_cast<double>(static_cast<int>(i)) * step);
    }
    return xs;
}

void cTrendline::drawLine(const Geometry& plot, const Columns& xs, const TrendTable& table, int series) {
    if (maxX - 2 < TrendTable::kNewestRow) {
        return;
    }
    const auto values = table.rows(series, TrendTable::kNewestRow, std::min(maxX - 1, TrendTable::kLastRow));
    const auto points = PicBox->surface().polyline(values.size(), colorOf(series));
    const double zero = plot.bottom + plot.zeroLift;
    const double height = plot.height();
    const double scale = maxY;
    const double top = plot.top;
    const double bottom = plot.bottom;
    std::array<std::int16_t, TrendTable::kLastRow> ys;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double y = zero - values[i] * height / scale;
        const double below = top > y ? top : y;
        ys[i] = rounded(bottom < below ? bottom : below);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        points[i] = {xs[i], ys[i]};
    }
    if (maxX - 1 > TrendTable::kLastRow) {
        throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
    }
}

Color cTrendline::colorOf(int series) const {
    return (ShowLimits ? kLimitColors : kColors)[static_cast<std::size_t>(series)];
}

}  // namespace korvane::trend
