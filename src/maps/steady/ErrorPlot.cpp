#include "maps/steady/ErrorPlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "core/Numbers.h"

namespace korvane::maps {

namespace {

using controls::Color;
using controls::Drawing;
using controls::Point;

constexpr Color kMeanColor = controls::kGreen;
constexpr Color kWorstColor = controls::kYellow;
constexpr Color kAxisColor = 0xC0C0C0;  // light grey
constexpr int kTextHeight = 210;

std::int16_t twips(double value) {
    return static_cast<std::int16_t>(std::clamp(std::lround(value), -32000L, 32000L));
}

std::string tenths(double value) {
    return core::textOf(std::round(value * 10.0) / 10.0);
}

std::string minutes(double seconds) {
    return core::textOf(std::round(seconds / 60.0)) + " min";
}

double topOf(const ErrorTrend& trend) {
    constexpr std::array kTops = {2.0, 5.0, 10.0, 20.0, 50.0, 100.0};
    double worst = 0.0;
    for (const auto& point : trend.points()) {
        worst = std::max(worst, point.worst);
    }
    const auto* const top = std::ranges::find_if(kTops, [&](double each) { return each >= worst; });
    return top == kTops.end() ? worst : *top;
}

struct Frame {
    double width, height, seconds, top;

    [[nodiscard]] Point at(double second, double percent) const {
        return {twips(width * second / seconds), twips(height * (1.0 - std::min(percent / top, 1.0)))};
    }
};

void drawLine(Drawing& drawing, const ErrorTrend& trend, const Frame& frame, double ErrorPoint::*part, Color color) {
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
    const Frame frame{static_cast<double>(width), static_cast<double>(height - kTextHeight),
                      trend.points().back().seconds, topOf(trend)};
    drawing.line(frame.at(0.0, 0.0), frame.at(frame.seconds, 0.0), kAxisColor);
    drawing.line(frame.at(0.0, frame.top / 2.0), frame.at(frame.seconds, frame.top / 2.0), kAxisColor);
    drawLine(drawing, trend, frame, &ErrorPoint::worst, kWorstColor);
    drawLine(drawing, trend, frame, &ErrorPoint::mean, kMeanColor);
    drawing.text({60, 30}, core::textOf(frame.top) + " %", kAxisColor);
    drawing.text({900, 30}, "worst cell", kWorstColor);
    drawing.text({2100, 30}, "mean", kMeanColor);
    drawing.text({60, twips(frame.height)}, "start", kAxisColor);
    drawing.text({twips(frame.width - 900.0), twips(frame.height)}, minutes(frame.seconds), kAxisColor);
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
