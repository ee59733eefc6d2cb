#include "views/maps/GridMarks.h"

#include <algorithm>

namespace korvane::views {

namespace {

constexpr int kMark = 2;
constexpr int kOutline = 3;
constexpr qreal kRingInset = 3.5;  // inside the mark of the focus
constexpr int kNarrow = 46;        // a cell in which a ring at that inset would lie on the number
constexpr int kFlat = 20;          // the same of its height
constexpr qreal kNarrowInset = 2;  // half of the pen: all of the ring is in the cell
constexpr qreal kRingCorner = 5;   // so that the ring of a square cell leaves the number alone
constexpr qreal kRing = 2;
constexpr qreal kRingEdge = 1;  // on both sides of it

// Lines along the edges of a cell, on the pixel that divides it from its neighbours and one on either side.
QRect above(const QRect& cell) {
    return {cell.left() - 2, cell.top() - 2, cell.width() + 4, kOutline};
}
QRect below(const QRect& cell) {
    return above(cell).translated(0, cell.height() + 1);
}
QRect leftOf(const QRect& cell) {
    return {cell.left() - 2, cell.top() - 2, kOutline, cell.height() + 4};
}
QRect rightOf(const QRect& cell) {
    return leftOf(cell).translated(cell.width() + 1, 0);
}

}  // namespace

void paintFocusMark(QPainter& painter, const QRect& cell, const QColor& color) {
    painter.fillRect(QRect(cell.topLeft(), QSize(cell.width(), kMark)), color);
    painter.fillRect(QRect(cell.left(), cell.bottom() - kMark + 1, cell.width(), kMark), color);
    painter.fillRect(QRect(cell.topLeft(), QSize(kMark, cell.height())), color);
    painter.fillRect(QRect(cell.right() - kMark + 1, cell.top(), kMark, cell.height()), color);
}

// White between black: one of both is seen on every ground.
void paintEngineRing(QPainter& painter, const QRect& cell) {
    const qreal side = cell.width() < kNarrow ? kNarrowInset : kRingInset;
    const qreal end = cell.height() < kFlat ? kNarrowInset : kRingInset;
    const QRectF ring = QRectF(cell).adjusted(side, end, -side, -end);
    const qreal radius = std::min(ring.height() / 2, kRingCorner);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, kRing + 2 * kRingEdge));
    painter.drawRoundedRect(ring, radius, radius);
    painter.setPen(QPen(Qt::white, kRing));
    painter.drawRoundedRect(ring, radius, radius);
    painter.restore();
}

QRect engineRingRect(const QRect& cell) {
    return cell.adjusted(-1, -1, 1, 1);
}

void paintOutline(QPainter& painter, const MapGridLayout& layout, const maps::CellRange& range) {
    const int columns = layout.geometry().columns;
    for (int cell = range.first; cell <= range.last; ++cell) {
        const QRect place = layout.cellRect(cell);
        const auto edge = [&](bool ends, const QRect& line) {
            if (ends) {
                painter.fillRect(line, kOutlineColor);
            }
        };
        edge(!range.has(cell - columns), above(place));
        edge(!range.has(cell + columns), below(place));
        edge(cell % columns == 0 || !range.has(cell - 1), leftOf(place));
        edge((cell + 1) % columns == 0 || !range.has(cell + 1), rightOf(place));
    }
}

}  // namespace korvane::views
