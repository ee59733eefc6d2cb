#include "controls/PictureBox.h"

#include <utility>

namespace korvane::controls {

void Drawing::clear() {
    shapes_.clear();
    points_.clear();
    textCount_ = 0;
}

void Drawing::line(Point from, Point to, Color color) {
    const auto points = polyline(2, color);
    points[0] = from;
    points[1] = to;
}

void Drawing::box(Point corner, Point opposite, Color color) {
    const auto points = polyline(2, color);
    points[0] = corner;
    points[1] = opposite;
    shapes_.back().kind = Kind::Box;
}

void Drawing::text(Point at, std::string_view words, Color color) {
    if (textCount_ == texts_.size()) {
        texts_.emplace_back();
    }
    texts_[textCount_].at = at;
    texts_[textCount_].words.assign(words);
    shapes_.push_back({Kind::Text, color, textCount_, 1});
    ++textCount_;
}

std::span<Point> Drawing::polyline(std::size_t count, Color color) {
    const auto first = points_.size();
    points_.resize(first + count);
    shapes_.push_back({Kind::Polyline, color, static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(count)});
    return std::span(points_).subspan(first);
}

std::span<const Point> Drawing::pointsOf(const Shape& shape) const {
    return std::span(points_).subspan(shape.first, shape.count);
}

const Drawing& PictureBox::drawing() const {
    settle();
    return drawing_;
}

Drawing& PictureBox::surface() {
    settle();
    return drawing_;
}

void PictureBox::drawLater(std::function<void()> draw) {
    waiting_ = std::move(draw);
}

void PictureBox::settle() const {
    if (waiting_) {
        std::exchange(waiting_, nullptr)();
    }
}

}  // namespace korvane::controls
