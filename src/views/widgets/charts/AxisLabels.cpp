#include "views/widgets/charts/AxisLabels.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane::views {

namespace {

constexpr double kGap = 7;  // between floor and text, logical pixels
constexpr double kAir = 1.15;
constexpr double kTooClose = 1e-6;
constexpr int kMostLines = 6;
constexpr int kSmallestTop = 10;
constexpr int kLargestByte = 255;

Place onEdge(Axis axis, const Projection& projection, double along, double out) {
    const double x = projection.nearX() + (projection.nearX() == 0 ? -out : out);
    const double y = projection.nearY() + (projection.nearY() == 0 ? -out : out);
    return axis == Axis::Columns ? Place{along, y, 0} : Place{x, along, 0};
}

// How many texts further on the next one fits.
int strideFor(QPointF step, QPointF direction, QSizeF largest) {
    const double across = std::abs(step.x() * direction.y() - step.y() * direction.x());
    const double along = std::abs(step.x() * direction.x() + step.y() * direction.y());
    const double stride = std::min(largest.height() * kAir / std::max(across, kTooClose),
                                   (largest.width() + largest.height()) / std::max(along, kTooClose));
    return static_cast<int>(std::ceil(std::clamp(stride, 1.0, 1e6)));
}

}  // namespace

std::array<QPointF, 4> AxisLabels::outline(std::size_t label, QSizeF size) const {
    const double angle = degrees * std::numbers::pi / 180;
    const QPointF along(std::cos(angle), std::sin(angle));
    const QPointF across(-along.y(), along.x());
    const QPointF from =
        places.at(label) - across * size.height() / 2 - (endsAtPlace ? along * size.width() : QPointF());
    const QPointF to = from + along * size.width();
    const QPointF down = across * size.height();
    return {from, to, to + down, from + down};
}

AxisLabels labelsOf(Axis axis, const Projection& projection, int count, QSizeF largest) {
    const auto at = [&](double along, double out) { return projection.at(onEdge(axis, projection, along, out)); };
    const QLineF outward(at(0, 0), at(0, 1));
    const QPointF direction = (outward.p2() - outward.p1()) / std::max(outward.length(), kTooClose);
    AxisLabels labels;
    labels.endsAtPlace = direction.x() < 0;
    const QPointF reading = labels.endsAtPlace ? -direction : direction;
    labels.degrees = std::atan2(reading.y(), reading.x()) * 180 / std::numbers::pi;
    const QPointF step = at(1.0 / std::max(count, 1), 0) - at(0, 0);
    for (int number = 0; number < count; number += strideFor(step, direction, largest)) {
        labels.numbers.push_back(number);
        labels.places.push_back(at((number + 0.5) / count, 0) + direction * kGap);
    }
    return labels;
}

HeightScale heightScaleFor(double largest) {
    constexpr std::array kSteps{2, 5, 10, 20, 25, 50};
    const auto* const found =
        std::find_if(kSteps.begin(), kSteps.end() - 1, [largest](int step) { return largest <= step * kMostLines; });
    return {*found, std::clamp(static_cast<int>(std::ceil(largest / *found)) * *found, kSmallestTop, kLargestByte)};
}

}  // namespace korvane::views
