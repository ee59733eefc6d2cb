#include "maps/steady/ErrorPlot.h"

#include <algorithm>
#include <cmath>

#include "controls/Plot.h"
#include "core/Numbers.h"

namespace korvane::maps {

namespace {

using controls::Color;
using controls::Drawing;
using controls::PlotFrame;
using controls::plotTwips;

constexpr Color kMeanColor = controls::kGreen;
constexpr Color kWorstColor = controls::kYellow;
constexpr Color kAxisColor = 0xC0C0C0;  // light grey
constexpr int kTextHeight = 210;

std::string tenths(double value) {
    return core::textOf(std::round(value * 10.0) / 10.0);
}

std::string minutes(double seconds) {
    return core::textOf(std::round(seconds / 60.0)) + " min";
}

double topOf(const ErrorTrend& trend) {
    constexpr double kLeast = 2.0;
    double worst = kLeast;
    for (const auto& point : trend.points()) {
        worst = std::max(worst, point.worst);
    }
    return controls::plotTop(worst);
}

void drawLine(Drawing& drawing, const ErrorTrend& trend, const PlotFrame& frame, double ErrorPoint::*part,
              Color color) {
    const auto points = trend.points();
    auto line = drawing.polyline(points.size(), color);
    std::ranges::transform(points, line.begin(),
                           [&](const ErrorPoint& point) { return frame.at(point.seconds, point.*part); });
}

}  // namespace

void drawErrors(Drawing& drawing, const ErrorTrend& trend, int width, int height) {
    drawing.clear();
    if (trend.points().size() < 2 || width <= 0 || height <= 2 * kTextHeight) {
        drawing.text({60, 30}, "No cell is known well enough yet", kAxisColor);
        return;
    }
    const PlotFrame frame{static_cast<double>(width), static_cast<double>(height - kTextHeight),
                          trend.points().back().seconds, topOf(trend)};
    drawing.line(frame.at(0.0, 0.0), frame.at(frame.seconds, 0.0), kAxisColor);
    drawing.line(frame.at(0.0, frame.top / 2.0), frame.at(frame.seconds, frame.top / 2.0), kAxisColor);
    drawLine(drawing, trend, frame, &ErrorPoint::worst, kWorstColor);
    drawLine(drawing, trend, frame, &ErrorPoint::mean, kMeanColor);
    drawing.text({60, 30}, core::textOf(frame.top) + " %", kAxisColor);
    drawing.text({900, 30}, "worst cell", kWorstColor);
    drawing.text({2100, 30}, "mean", kMeanColor);
    drawing.text({60, plotTwips(frame.height)}, "start", kAxisColor);
    drawing.text({plotTwips(frame.width - 900.0), plotTwips(frame.height)}, minutes(frame.seconds), kAxisColor);
}

std::string wordsOf(const ErrorTrend& trend) {
    if (trend.points().empty()) {
        return {};
    }
    const auto& last = trend.points().back();
    return trend.agent() + ", " + minutes(last.seconds) + ": mean error " + tenths(last.mean) + " %, worst cell " +
           tenths(last.worst) + " %";
}

}  // namespace korvane::maps
