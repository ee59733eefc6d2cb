#include "views/widgets/charts/ChartPainter.h"

#include <QFontMetricsF>
#include <QLinearGradient>

#include <algorithm>
#include <array>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr std::array kRamp{QColor(38, 84, 190), QColor(28, 150, 190), QColor(62, 178, 96), QColor(240, 200, 50),
                           QColor(222, 66, 44)};
constexpr double kShade = 0.34;  // of black on what turns away from the light
constexpr double kLineShade = 0.30;
constexpr double kMarkShare = 0.60;
constexpr double kFloorShare = 0.05;
constexpr double kGridShare = 0.16;
constexpr double kFrameShare = 0.38;
constexpr double kTextShare = 0.85;
constexpr double kLine = 1;  // logical pixels
constexpr double kAxisLine = 5;
constexpr double kTextGap = 9;

}  // namespace

QColor colorOfHeight(double height) {
    const double place = std::clamp(height, 0.0, 1.0) * (kRamp.size() - 1);
    const auto lower = std::min(static_cast<std::size_t>(place), kRamp.size() - 2);
    return mixed(kRamp.at(lower), kRamp.at(lower + 1), place - static_cast<double>(lower));
}

QSizeF ChartPainter::largestOf(const std::vector<QString>& texts, const QFont& font) {
    const QFontMetricsF metrics(font);
    QSizeF largest(0, metrics.ascent());
    for (const auto& text : texts) {
        largest.rwidth() = std::max(largest.width(), metrics.horizontalAdvance(text));
    }
    return largest;
}

QColor ChartPainter::ink(double share) const {
    return mixed(shades::face(palette_), palette_.color(QPalette::Text), share);
}

void ChartPainter::line(Place from, Place to) {
    painter_.drawLine(projection_.at(from), projection_.at(to));
}

void ChartPainter::paint() {
    paintBox();
    paintFloorLines();
    paintHeightLines();
    paintFaces();
    paintLabels(Axis::Columns, scene_.columnLabels);
    paintLabels(Axis::Rows, scene_.rowLabels);
    paintHeightAxis();
}

// The floor and the two walls behind the map.
void ChartPainter::paintBox() {
    const double farX = 1 - projection_.nearX();
    const double farY = 1 - projection_.nearY();
    const auto panel = [this](Place one, Place two, Place three, Place four, double share) {
        painter_.setBrush(ink(share));
        painter_.drawConvexPolygon(
            std::array{projection_.at(one), projection_.at(two), projection_.at(three), projection_.at(four)}.data(),
            4);
    };
    painter_.setPen(QPen(ink(kFrameShare), kLine));
    panel({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, kFloorShare * 1.6);
    panel({farX, 0, 0}, {farX, 1, 0}, {farX, 1, 1}, {farX, 0, 1}, kFloorShare);
    panel({0, farY, 0}, {1, farY, 0}, {1, farY, 1}, {0, farY, 1}, kFloorShare);
}

void ChartPainter::paintFloorLines() {
    painter_.setPen(QPen(ink(kGridShare), kLine));
    const double farX = 1 - projection_.nearX();
    const double farY = 1 - projection_.nearY();
    for (int column = 0; column < scene_.heights.columns; ++column) {
        const double x = (column + 0.5) / scene_.heights.columns;
        line({x, 0, 0}, {x, 1, 0});
        line({x, farY, 0}, {x, farY, 1});
    }
    for (int row = 0; row < scene_.heights.rows; ++row) {
        const double y = (row + 0.5) / scene_.heights.rows;
        line({0, y, 0}, {1, y, 0});
        line({farX, y, 0}, {farX, y, 1});
    }
}

void ChartPainter::paintHeightLines() {
    painter_.setPen(QPen(ink(kGridShare * 1.5), kLine));
    const double farX = 1 - projection_.nearX();
    const double farY = 1 - projection_.nearY();
    for (int value = scene_.scale.step; value < scene_.scale.top; value += scene_.scale.step) {
        const double z = static_cast<double>(value) / scene_.scale.top;
        line({farX, 0, z}, {farX, 1, z});
        line({0, farY, z}, {1, farY, z});
    }
}

void ChartPainter::paintFaces() {
    for (const auto& face : scene_.faces) {
        paintFace(face);
    }
}

// A pen of the face's own colour closes the seam to its neighbours.
void ChartPainter::paintFace(const Face& face) {
    const QColor lit = mixed(colorOfHeight(face.height), Qt::black, kShade * (1 - face.light));
    const QColor color = scene_.marked == face.cell ? mixed(lit, Qt::white, kMarkShare) : lit;
    painter_.setPen(QPen(color, kLine / 2));
    painter_.setBrush(color);
    painter_.drawPolygon(face.corners.data(), static_cast<int>(face.corners.size()));
    painter_.setPen(QPen(mixed(color, Qt::black, kLineShade), kLine));
    for (std::size_t i = 0; i < face.corners.size(); ++i) {
        if (face.lines.at(i)) {
            painter_.drawLine(face.corners.at(i), face.corners.at((i + 1) % face.corners.size()));
        }
    }
}

void ChartPainter::paintLabels(Axis axis, const std::vector<QString>& texts) {
    const QSizeF largest = largestOf(texts, painter_.font());
    const AxisLabels labels = labelsOf(axis, projection_, static_cast<int>(texts.size()), largest);
    const QFontMetricsF metrics(painter_.font());
    painter_.setPen(ink(kTextShare));
    for (std::size_t i = 0; i < labels.numbers.size(); ++i) {
        const QString& text = texts.at(static_cast<std::size_t>(labels.numbers[i]));
        painter_.save();
        painter_.translate(labels.places[i]);
        painter_.rotate(labels.degrees);
        painter_.drawText(QPointF(labels.endsAtPlace ? -metrics.horizontalAdvance(text) : 0, metrics.capHeight() / 2),
                          text);
        painter_.restore();
    }
}

// At the left edge of the picture, in the colours of the map.
void ChartPainter::paintHeightAxis() {
    const Place one{projection_.nearX(), 1 - projection_.nearY(), 0};
    const Place other{1 - projection_.nearX(), projection_.nearY(), 0};
    const Place foot = projection_.at(one).x() < projection_.at(other).x() ? one : other;
    const QPointF low = projection_.at(foot);
    const QPointF high = projection_.at({foot.x, foot.y, 1});
    QLinearGradient colors(low, high);
    for (int i = 0; i < static_cast<int>(kRamp.size()); ++i) {
        colors.setColorAt(i / static_cast<double>(kRamp.size() - 1), kRamp.at(static_cast<std::size_t>(i)));
    }
    painter_.setPen(QPen(colors, kAxisLine, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(low, high);

    const QFontMetricsF metrics(painter_.font());
    painter_.setPen(ink(kTextShare));
    double free = low.y() - metrics.height();
    for (int value = scene_.scale.step; value <= scene_.scale.top; value += scene_.scale.step) {
        const double y = low.y() + (high.y() - low.y()) * value / scene_.scale.top;
        if (y <= free) {
            const QString text = QString::number(value);
            painter_.drawText(
                QPointF(low.x() - kTextGap - metrics.horizontalAdvance(text), y + metrics.capHeight() / 2), text);
            free = y - metrics.height();
        }
    }
}

}  // namespace korvane::views
