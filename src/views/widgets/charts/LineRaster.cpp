#include "views/widgets/charts/LineRaster.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace korvane::views {

namespace {

constexpr std::size_t kBand = 16;  // columns: their pixels in one row are one line of the processor's cache

// How far a line that comes `rise` pixels in `length` steps has come at each step, rounded as the toolkit does it.
class Slope {
public:
    Slope(int rise, int length) : each_(rise * kOne / length), start_(std::max<std::int64_t>(each_, 0) / 2) {}

    [[nodiscard]] int at(std::int64_t step) const { return static_cast<int>((start_ + step * each_) >> kBits); }
    // The last step at which the line is no further than `place` pixels away from its start. Not for a level line.
    [[nodiscard]] int lastAt(std::int64_t place) const {
        return static_cast<int>(each_ > 0 ? ((place + 1) * kOne - start_ - 1) / each_ : place * kOne / -each_);
    }

private:
    static constexpr int kBits = 32;
    static constexpr std::int64_t kOne = std::int64_t{1} << kBits;

    std::int64_t each_;
    std::int64_t start_;
};

}  // namespace

void LineRaster::clear(QSize size) {
    height_ = size.height();
    columns_.resize(static_cast<std::size_t>(size.width()));
    for (auto& column : columns_) {
        column.clear();
    }
}

void LineRaster::add(const QPolygon& line, QRgb color) {
    for (qsizetype i = 1; i < line.size(); ++i) {
        addSegment(line[i - 1], line[i], color);
    }
}

void LineRaster::addSegment(QPoint from, QPoint to, QRgb color) {
    const QPoint way = to - from;
    if (way.x() == 0) {
        const auto [top, bottom] = std::minmax({from.y(), to.y()});
        addRun(from.x(), {top, bottom, color});
    } else if (std::abs(way.x()) >= std::abs(way.y())) {
        way.x() > 0 ? addFlat(from, to, color) : addFlat(to, from, color);
    } else {
        way.y() > 0 ? addSteep(from, to, color) : addSteep(to, from, color);
    }
}

// One pixel in each column.
void LineRaster::addFlat(QPoint left, QPoint right, QRgb color) {
    const Slope slope(right.y() - left.y(), right.x() - left.x());
    const int last = std::min(right.x(), static_cast<int>(columns_.size()) - 1);
    for (int x = std::max(left.x(), 0); x <= last; ++x) {
        const int y = left.y() + slope.at(x - left.x());
        addRun(x, {y, y, color});
    }
}

// One pixel in each row.
void LineRaster::addSteep(QPoint top, QPoint bottom, QRgb color) {
    const QPoint way = bottom - top;
    const Slope slope(way.x(), way.y());
    const int direction = way.x() > 0 ? 1 : -1;
    const int right = static_cast<int>(columns_.size()) - 1;
    const int before = std::max(direction > 0 ? -top.x() : top.x() - right, 0);
    const int behind = std::min(direction > 0 ? right - top.x() : top.x(), std::abs(way.x()));
    int first = before > 0 ? slope.lastAt(before - 1) + 1 : 0;
    for (int place = before; place <= behind; ++place) {
        const int last = std::min(slope.lastAt(place), way.y());
        addRun(top.x() + direction * place, {top.y() + first, top.y() + last, color});
        first = last + 1;
    }
}

// A run that touches the last one in its column is added to it.
void LineRaster::addRun(int column, Run run) {
    if (column < 0 || column >= static_cast<int>(columns_.size())) {
        return;
    }
    auto& runs = columns_[static_cast<std::size_t>(column)];
    if (!runs.empty() && runs.back().color == run.color && run.top <= runs.back().bottom + 1 &&
        run.bottom + 1 >= runs.back().top) {
        runs.back().top = std::min(runs.back().top, run.top);
        runs.back().bottom = std::max(runs.back().bottom, run.bottom);
    } else {
        runs.push_back(run);
    }
}

void LineRaster::fillColumn(std::size_t column, QRgb* pixels, QRgb ground) const {
    std::fill_n(pixels, height_, ground);
    for (const auto& run : columns_[column]) {
        const int top = std::max(run.top, 0);
        std::fill_n(pixels + top, std::min(run.bottom + 1, height_) - top, run.color);
    }
}

// The pixels of a column are far apart in memory, so that filling a column is slow. So some columns at a time are
// filled in a buffer where each is contiguous, and then copied by rows.
void LineRaster::paint(QImage& image, QRgb ground) {
    const auto height = static_cast<std::size_t>(height_);
    const auto stride = static_cast<std::size_t>(image.bytesPerLine()) / sizeof(QRgb);
    band_.resize(kBand * height);
    for (std::size_t left = 0; left < columns_.size(); left += kBand) {
        const std::size_t count = std::min(kBand, columns_.size() - left);
        for (std::size_t i = 0; i < count; ++i) {
            fillColumn(left + i, &band_[i * height], ground);
        }
        auto* row = reinterpret_cast<QRgb*>(image.bits()) + left;
        for (std::size_t y = 0; y < height; ++y, row += stride) {
            for (std::size_t i = 0; i < count; ++i) {
                row[i] = band_[i * height + y];
            }
        }
    }
}

}  // namespace korvane::views
