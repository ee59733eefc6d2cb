#include "views/widgets/values/BoxMark.h"

#include <QPolygonF>

#include <algorithm>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr QColor kCorner{214, 110, 0};
constexpr QColor kUnderline{235, 80, 70};
constexpr double kCornerOfHeight = 0.36;
constexpr int kSmallestCorner = 6;
constexpr double kPen = 1.4;
constexpr int kUnderlineWidth = 2;
constexpr double kVisible = 2.6;  // the least contrast of a mark

// Black or white where the mark's own colour would be lost, as on a cell that the program has made red.
QColor onGround(const QColor& color, const QColor& ground) {
    return visibleOn(ground, color, kVisible);
}

}  // namespace

void paintCorner(QPainter& painter, const QRect& place, BoxMark mark, const QColor& ground) {
    if (mark == BoxMark::None) {
        return;
    }
    const QColor color = onGround(kCorner, ground);
    const double side = std::max(static_cast<int>(place.height() * kCornerOfHeight), kSmallestCorner);
    const QPointF corner(place.x() + place.width() - 1, place.y() + 1);
    const QPolygonF triangle({corner, corner - QPointF(side, 0), corner + QPointF(0, side)});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, kPen));
    painter.setBrush(mark == BoxMark::Filled ? QBrush(color) : QBrush(Qt::NoBrush));
    painter.drawPolygon(triangle);
    painter.restore();
}

void paintUnderline(QPainter& painter, const QRect& place, const QColor& ground) {
    const QRect line(place.left() + kUnderlineWidth, place.bottom() - 2 * kUnderlineWidth,
                     place.width() - 2 * kUnderlineWidth, kUnderlineWidth);
    painter.fillRect(line, onGround(kUnderline, ground));
}

}  // namespace korvane::views
