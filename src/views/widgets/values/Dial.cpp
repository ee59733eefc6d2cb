#include "views/widgets/values/Dial.h"

#include <QEvent>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

// The number's place, as fractions of the side.
constexpr QRectF kPlate{0.35, 0.75, 0.25, 0.1};
constexpr double kDigitShare = 0.075;  // of the side: the font's size
constexpr double kHubDiameter = 17;    // logical pixels: 255 twips
constexpr double kNeedleWidth = 0.020;
constexpr double kTipWidth = 0.006;
constexpr double kPeakWidth = 0.012;
constexpr double kPlateMargin = 0.15;
constexpr int kMargin = 3;
constexpr int kSmallestSide = 156;

}  // namespace

Dial::Dial(QWidget* parent) : SquareWidget(kSmallestSide, parent), scale_(dialScaleOf(0)) {}

QPointF Dial::place(live::DialPoint point) const {
    const QRect where = square();
    return QPointF(where.topLeft()) + QPointF(point.x, point.y) * where.width();
}

QRect Dial::around(const live::DialLine& line) const {
    const int margin = kMargin + static_cast<int>(square().width() * kNeedleWidth);
    return QRectF(place(line.inner), place(line.outer))
        .normalized()
        .toAlignedRect()
        .adjusted(-margin, -margin, margin, margin);
}

QRect Dial::numberPlate() const {
    const QRect where = square();
    return QRectF(where.x() + kPlate.x() * where.width(), where.y() + kPlate.y() * where.width(),
                  kPlate.width() * where.width(), kPlate.height() * where.width())
        .toAlignedRect()
        .adjusted(-1, -1, 1, 1);
}

void Dial::setPose(const Pose& pose) {
    if (pose.meterType != pose_.meterType) {
        scale_ = dialScaleOf(pose.meterType);
        renewFace();
    }
    if (pose.number != pose_.number) {
        update(numberPlate());
    }
    update(QRegion(around(pose_.needle)) + around(pose.needle));
    update(QRegion(around(pose_.peak)) + around(pose.peak));
    pose_ = pose;
}

void Dial::renewFace() {
    face_ = QPixmap();
    update();
}

void Dial::resizeEvent(QResizeEvent*) {
    renewFace();
    QFont font = fontOf(kDigitShare);
    font.setBold(true);
    digits_.setFont(font);
    if (resized_) {
        resized_(square().width());
    }
}

// A window that flashes changes only the ground around the face.
const QPixmap& Dial::face() {
    const QColor ink = palette().color(QPalette::Text);
    if (face_.isNull() || face_.devicePixelRatio() != devicePixelRatioF() || ink != faceInk_) {
        face_ = paintDialFace(scale_, square().width(), devicePixelRatioF(), palette(), font());
        faceInk_ = ink;
    }
    return face_;
}

void Dial::paintEvent(QPaintEvent*) {
    const QRect where = square();
    QPainter painter(this);
    painter.fillRect(rect(), shades::surface(palette()));
    painter.drawPixmap(where.topLeft(), face());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hues::kPeak, std::max(1.5, where.width() * kPeakWidth), Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(place(pose_.peak.inner), place(pose_.peak.outer));
    paintNeedle(painter);
    paintNumber(painter);
}

void Dial::paintNeedle(QPainter& painter) const {
    const QPointF inner = place(pose_.needle.inner);
    const QPointF outer = place(pose_.needle.outer);
    const QPointF along = outer - inner;
    const double length = std::max(std::hypot(along.x(), along.y()), 1.0);
    const QPointF across = QPointF(-along.y(), along.x()) / length * square().width();
    painter.setPen(Qt::NoPen);
    painter.setBrush(hues::kNeedle);
    painter.drawConvexPolygon(QPolygonF{inner - across * kNeedleWidth / 2, outer - across * kTipWidth / 2,
                                        outer + across * kTipWidth / 2, inner + across * kNeedleWidth / 2});
    painter.setBrush(palette().color(QPalette::Text));
    painter.drawEllipse(place({0.5, 0.5}), kHubDiameter / 2, kHubDiameter / 2);
}

// Centred below the hub if the number's place extends to the middle.
void Dial::paintNumber(QPainter& painter) const {
    const QRectF plate = QRectF(numberPlate()).adjusted(1, 1, -1, -1);
    const qreal wanted = digits_.width(pose_.number);
    const qreal shrink = std::min(1.0, plate.width() / std::max(wanted, 1.0));
    const qreal width = wanted * shrink;
    const qreal middle = QRectF(square()).center().x();
    const QRectF place(std::clamp(middle - width / 2, plate.left(), plate.right() - width), plate.top(), width,
                       plate.height());
    const qreal margin = plate.height() * kPlateMargin;
    painter.setPen(Qt::NoPen);
    painter.setBrush(shades::face(palette()));
    painter.drawRoundedRect(place.adjusted(-margin, 0, margin, margin / 2), margin, margin);
    painter.setPen(palette().color(QPalette::Text));
    painter.translate(place.left(), place.center().y() + digits_.digitHeight() * shrink / 2);
    painter.scale(shrink, shrink);
    digits_.draw(painter, {}, pose_.number);
}

}  // namespace korvane::views
