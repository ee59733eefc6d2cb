#include "views/widgets/values/Lamp.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {
constexpr double kRim = 1.5;
constexpr double kMargin = 1.5;
constexpr double kOffShare = 0.10;
constexpr double kOffRimShare = 0.42;
constexpr double kLitRimShare = 0.30;
}  // namespace

Lamp::Lamp(QWidget* parent) : PaintedWidget(QSizePolicy::Fixed, QSizePolicy::Fixed, parent) {}

void Lamp::setPicture(controls::Picture picture) {
    if (picture != picture_) {
        picture_ = picture;
        update();
    }
}

QSize Lamp::sizeHint() const {
    const int side = QFontMetrics(font()).height();
    return {side, side};
}

void Lamp::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

void Lamp::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = shades::surface(palette());
    painter.fillRect(rect(), ground);
    if (picture_ == controls::Picture::None) {
        return;
    }
    const QColor text = palette().color(QPalette::WindowText);
    const bool lit = picture_ != controls::Picture::Grey;
    const QColor light = picture_ == controls::Picture::Green ? hues::kGreenLamp : hues::kRedLamp;
    const double radius = std::min(width(), height()) / 2.0 - kMargin;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(lit ? mixed(light, Qt::black, kLitRimShare) : mixed(ground, text, kOffRimShare), kRim));
    painter.setBrush(lit ? light : mixed(ground, text, kOffShare));
    painter.drawEllipse(QRectF(rect()).center(), radius, radius);
}

}  // namespace korvane::views
