#include "views/widgets/values/Gauge.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr double kDigitShare = 0.17;  // of the side: the number's font size
constexpr double kCaptionShare = 0.09;
constexpr double kNumberCentre = 0.80;  // of the side, from the top
constexpr double kCaptionCentre = 0.35;
constexpr double kTickWidth = 0.009;
constexpr double kPointerWidth = 0.016;
constexpr double kHub = 0.045;
constexpr double kStartAngle = 225;  // of the arc, as the toolkit counts: against the clock from three o'clock
constexpr double kDegreesPerUnit = 2.7;
constexpr int kSmallestSide = 130;

}  // namespace

Gauge::Gauge(QWidget* parent) : SquareWidget(kSmallestSide, parent) {}

QPointF Gauge::place(live::DialPoint point) const {
    return QPointF(point.x, point.y) * square().width();
}

void Gauge::setPose(const Pose& pose) {
    if (pose.caption != pose_.caption) {
        faces_ = {};
    }
    pose_ = pose;
    update();
}

void Gauge::resizeEvent(QResizeEvent*) {
    faces_ = {};
    QFont font = fontOf(kDigitShare);
    font.setBold(true);
    digits_.setFont(font);
}

const Gauge::Faces& Gauge::faces() {
    const QColor ink = palette().color(QPalette::WindowText);
    if (faces_.dark.isNull() || faces_.dark.devicePixelRatio() != devicePixelRatioF() || ink != faceInk_) {
        faces_.dark = paintFace(mixed(shades::surface(palette()), ink, 0.24));
        faces_.lit = paintFace(palette().color(QPalette::Highlight));
        faceInk_ = ink;
    }
    return faces_;
}

QPixmap Gauge::paintFace(const QColor& ticks) const {
    const int side = square().width();
    const int pixels = std::max(1, static_cast<int>(std::ceil(side * devicePixelRatioF())));
    QPixmap face(pixels, pixels);
    face.setDevicePixelRatio(devicePixelRatioF());
    face.fill(Qt::transparent);
    QPainter painter(&face);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ticks, std::max(1.0, side * kTickWidth), Qt::SolidLine, Qt::FlatCap));
    for (int i = 1; i <= live::SarnGauge::kTickCount; ++i) {
        const auto tick = live::SarnGauge::tick(i);
        painter.drawLine(place(tick.inner), place(tick.outer));
    }
    painter.setPen(QPen(shades::muted(palette()), std::max(1.0, side * kTickWidth)));
    for (const auto& line : {live::SarnGauge::startLine(), live::SarnGauge::endLine()}) {
        painter.drawLine(place(line.inner), place(line.outer));
    }
    painter.setFont(fontOf(kCaptionShare));
    painter.drawText(QRectF(0, side * (kCaptionCentre - kCaptionShare), side, 2 * side * kCaptionShare),
                     Qt::AlignCenter, pose_.caption);
    return face;
}

void Gauge::paintEvent(QPaintEvent*) {
    const QRect where = square();
    const double side = where.width();
    QPainter painter(this);
    painter.fillRect(rect(), shades::surface(palette()));
    painter.translate(where.topLeft());
    painter.drawPixmap(0, 0, faces().dark);
    if (pose_.value > 0) {
        QPainterPath lit(QPointF(side / 2, side / 2));
        lit.arcTo(QRectF(0, 0, side, side), kStartAngle - 0.5, -(pose_.value + 0.5) * kDegreesPerUnit);
        lit.closeSubpath();
        painter.save();
        painter.setClipPath(lit);
        painter.drawPixmap(0, 0, faces().lit);
        painter.restore();
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hues::kNeedle, std::max(1.5, side * kPointerWidth), Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(place({0.5, 0.5}), place(pose_.tip));
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::WindowText));
    painter.drawEllipse(place({0.5, 0.5}), side * kHub / 2, side * kHub / 2);
    painter.setPen(palette().color(QPalette::WindowText));
    digits_.draw(painter, {(side - digits_.width(pose_.number)) / 2, side * kNumberCentre + digits_.digitHeight() / 2},
                 pose_.number);
}

}  // namespace korvane::views
