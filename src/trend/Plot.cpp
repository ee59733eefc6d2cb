#include "trend/Plot.h"

#include <algorithm>
#include <array>
#include <bit>

#include "core/Numbers.h"

namespace korvane::trend {

namespace {

using controls::Color;
using controls::Point;

constexpr int kLeft = 500;
constexpr int kTop = 100;
constexpr int kBottomMargin = 300;
constexpr double kRightShare = 0.8;  // of the surface's width
constexpr int kScaleLabelX = 50;
constexpr int kLabelShift = 85;
constexpr int kRightScaleGap = 10;
constexpr int kRightScaleTop = 100;  // value
constexpr int kLegendGap = 50;
constexpr int kLegendGapRightScale = 400;
constexpr int kLegendStep = 350;
constexpr int kLegendLineStep = 150;
constexpr std::size_t kRowsAtOnce = 512;
constexpr Color kFrameColor = 0xF0F0F0;  // the system's button face; a drawing has fixed colours

constexpr std::array<Color, kPlotSeries> kColors{controls::kWhite, controls::kYellow, controls::kRed, controls::kCyan,
                                                 controls::kMagenta};
constexpr std::array<Color, kPlotSeries> kLimitColors{controls::kWhite, controls::kRed, controls::kMagenta,
                                                      controls::kRed, controls::kMagenta};

Point pointAt(double x, double y) {
    return {core::toInt16(x), core::toInt16(y)};
}

// Adding this leaves a double's whole part, rounded half to even, in its low bits: a rounding that vectorises.
constexpr double kRounder = 6755399441055744.0;

std::int16_t rounded(double value) {
    return static_cast<std::int16_t>(std::bit_cast<std::uint64_t>(value + kRounder) & 0xFFFF);
}

PlotFrame frameOn(const controls::PictureBox& picture, const PlotScale& scale) {
    PlotFrame frame{};
    frame.left = kLeft;
    frame.right = core::toInt16(picture.Width * kRightShare);
    frame.top = kTop;
    frame.bottom = core::toInt16(static_cast<double>(picture.Height) - kBottomMargin);
    frame.zeroLift = scale.minY < 0 ? core::toInt16(frame.height() / 10.0) : 0;
    return frame;
}

}  // namespace

// Four at a time, each with a maximum of its own, so that no step waits for the one before.
double peakOf(std::span<const double> values) {
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

int scaleFor(int peak, int maxY) {
    return peak + 5 >= maxY || peak < maxY - 15 ? peak + 10 : maxY;
}

void Plot::place(const controls::PictureBox& picture, const PlotScale& scale, bool rightScale) {
    frame_ = frameOn(picture, scale);
    scale_ = scale;
    legendLeft_ = frame_.right + (rightScale ? kLegendGapRightScale : kLegendGap);
    legendTop_ = frame_.top + frame_.height() * 5 / 100.0;
    placed_ = 0;
}

void Plot::begin(controls::PictureBox& picture) {
    surface_ = &picture.surface();
    surface_->clear();
}

// A draw that waits may be this plot's: it is made before the plot gets another place.
void Plot::begin(controls::PictureBox& picture, const PlotScale& scale, bool rightScale) {
    picture.settle();
    place(picture, scale, rightScale);
    begin(picture);
}

void Plot::drawValueGrid() {
    const double step = static_cast<double>(scale_.maxY) / scale_.Resolution;
    const int first = frame_.zeroLift != 0 ? -1 : 0;
    for (int i = first; step > 0 && i * step < scale_.maxY; ++i) {
        const double v = i * step;
        const double y = frame_.bottom + frame_.zeroLift - v / scale_.maxY * frame_.height();
        surface_->line(pointAt(frame_.left, y), pointAt(frame_.right, y), controls::kDarkGrey);
        surface_->text(pointAt(kScaleLabelX, y - kLabelShift), core::numberText(core::toInt(v)).view(),
                       controls::kWhite);
    }
}

void Plot::drawRightScale() {
    const double step =
        kRightScaleTop / ((scale_.maxY - scale_.minY) / (static_cast<double>(scale_.maxY) / scale_.Resolution));
    for (int i = 0; step > 0 && i * step <= kRightScaleTop; ++i) {
        const double y = frame_.bottom + frame_.zeroLift - i * step / kRightScaleTop * frame_.height();
        surface_->text(pointAt(frame_.right + kRightScaleGap, y - kLabelShift),
                       core::numberText(core::toInt(i * step)).view(), colorOf(1));
    }
}

double Plot::placeOf(double rows) const {
    const double distance = rows / scale_.maxX * frame_.width();
    return scale_.ToRight ? frame_.left + distance : frame_.right - distance;
}

void Plot::drawRowLine(double rows, std::string_view label) {
    const double x = placeOf(rows);
    surface_->line(pointAt(x, frame_.top), pointAt(x, frame_.bottom), controls::kDarkGrey);
    if (!label.empty()) {
        surface_->text(pointAt(x - kLabelShift, frame_.bottom + kLabelShift), label, controls::kWhite);
    }
}

void Plot::drawFrame() {
    surface_->box(pointAt(frame_.left, frame_.top), pointAt(frame_.right, frame_.bottom), kFrameColor);
}

void Plot::drawNote(int height, std::string_view words) {
    surface_->text(pointAt(legendLeft_, frame_.bottom - height), words, controls::kWhite);
}

void Plot::drawLegend(std::string_view name, std::string_view below, int series) {
    surface_->text(pointAt(legendLeft_, legendTop_), name, colorOf(series));
    if (!below.empty()) {
        surface_->text(pointAt(legendLeft_, legendTop_ + kLegendLineStep), below, colorOf(series));
    }
    legendTop_ += kLegendStep;
}

void Plot::drawSeries(const PlotColumn& column, int series) {
    const auto rows =
        std::min(column.firstRow + column.values.size(), static_cast<std::size_t>(std::max(scale_.maxX, 0)) + 1);
    if (rows <= column.firstRow) {
        return;
    }
    const auto values = column.values.first(rows - column.firstRow);
    const auto places = placesOf(rows).subspan(column.firstRow);
    const auto points = surface_->polyline(values.size(), colorOf(series));
    std::array<std::int16_t, kRowsAtOnce> levels;
    for (std::size_t done = 0; done < values.size(); done += levels.size()) {
        const auto part = values.subspan(done, std::min(levels.size(), values.size() - done));
        levelsOf(part, levels);
        for (std::size_t i = 0; i < part.size(); ++i) {
            points[done + i] = {places[done + i], levels[i]};
        }
    }
}

void Plot::levelsOf(std::span<const double> values, std::span<std::int16_t> levels) const {
    const double zero = frame_.zero();
    const double height = frame_.height();
    const double scale = scale_.maxY;
    const double top = frame_.top;
    const double bottom = frame_.bottom;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double y = zero - values[i] * height / scale;
        const double below = top > y ? top : y;
        levels[i] = rounded(bottom < below ? bottom : below);
    }
}

std::span<const std::int16_t> Plot::placesOf(std::size_t rows) {
    if (places_.size() < rows) {
        places_.resize(rows);
    }
    const double step = static_cast<double>(frame_.width()) / scale_.maxX * (scale_.ToRight ? 1 : -1);
    const double edge = scale_.ToRight ? frame_.left : frame_.right;
    for (std::size_t i = placed_; i < rows; ++i) {
        places_[i] = rounded(edge + static_cast<double>(static_cast<int>(i)) * step);
    }
    placed_ = std::max(placed_, rows);
    return std::span(places_).first(rows);
}

Color Plot::colorOf(int series) const {
    return (scale_.ShowLimits ? kLimitColors : kColors)[static_cast<std::size_t>(series)];
}

}  // namespace korvane::trend
