#include "views/widgets/charts/LineRaster.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace korvane::views {

namespace {

constexpr std::size_t kBand = 16;  // columns: their pixels in one row are one line of the processor's cache

// How far a line that rises by `rise` in `length` steps has come at a step, rounded as the toolkit does it: to the
// nearest pixel upwards, down to the next one downwards.
std::int64_t riseAt(std::int64_t step, std::int64_t rise, std::int64_t length) {
    return rise >= 0 ? (2 * step + 1) * rise / (2 * length) : -((step * -rise + length - 1) / length);
}

// The last step at which the line has come no further than `place`, away from its start.
std::int64_t lastStepAt(std::int64_t place, std::int64_t rise, std::int64_t length) {
    return rise >= 0 ? (2 * length * (place + 1) - rise - 1) / (2 * rise) : place * length / -rise;
}

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
        const auto [top, bottom] = std::minmax(from.y(), to.y());
        addRun(from.x(), {top, bottom, color});
    } else if (std::abs(way.x()) >= std::abs(way.y())) {
        way.x() > 0 ? addFlat(from, to, color) : addFlat(to, from, color);
    } else {
        way.y() > 0 ? addSteep(from, to, color) : addSteep(to, from, color);
    }
}

// One pixel in each column.
void LineRaster::addFlat(QPoint left, QPoint right, QRgb color) {
    const QPoint way = right - left;
    const int last = std::min(right.x(), static_cast<int>(columns_.size()) - 1);
    for (int x = std::max(left.x(), 0); x <= last; ++x) {
        const int y = left.y() + static_cast<int>(riseAt(x - left.x(), way.y(), way.x()));
        addRun(x, {y, y, color});
    }
}

// One pixel in each row.
void LineRaster::addSteep(QPoint top, QPoint bottom, QRgb color) {
    const QPoint way = bottom - top;
    const int direction = way.x() > 0 ? 1 : -1;
    for (int place = 0; place <= std::abs(way.x()); ++place) {
        const auto first = place == 0 ? 0 : lastStepAt(place - 1, way.x(), way.y()) + 1;
        const auto last = std::min<std::int64_t>(lastStepAt(place, way.x(), way.y()), way.y());
        addRun(top.x() + direction * place,
               {top.y() + static_cast<int>(first), top.y() + static_cast<int>(last), color});
    }
}

// A run that touches the last one in its column makes that one longer.
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

// A column of the picture is spread over the memory, so that going down it is slow. Some of them at a time are filled
// where each is in one piece, and then copied by rows.
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
