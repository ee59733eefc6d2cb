#include "views/widgets/values/BigFigures.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr int kUnitPixels = 200;
constexpr double kFilled = 0.96;        // of the widget's width, by the widest text
constexpr double kFilledHeight = 0.9;   // of its height, by a digit
constexpr const char* kUsual = "9999";  // shorter texts are no larger
constexpr int kSmallestPixels = 4;

QFont sized(QFont font, int pixels) {
    font.setPixelSize(pixels);
    font.setBold(true);
    return font;
}

}  // namespace

BigFigures::BigFigures(QWidget* parent) : Dimmable(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    measure();
}

void BigFigures::setText(const QString& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    widths_.at(next_) = unit_.width(text_);
    next_ = (next_ + 1) % kRemembered;
    refit();
    update();
}

void BigFigures::forget() {
    widths_.fill(0);
}

void BigFigures::measure() {
    unit_.setFont(sized(font(), kUnitPixels));
    forget();
    refit();
    update();
}

void BigFigures::refit() {
    const qreal widest = std::max(
        {unit_.width(QLatin1String(kUsual)), unit_.width(text_), *std::max_element(widths_.begin(), widths_.end())});
    const qreal byWidth = width() * kFilled / widest;
    const qreal byHeight = height() * kFilledHeight / unit_.digitHeight();
    const int pixels = std::max(static_cast<int>(kUnitPixels * std::min(byWidth, byHeight)), kSmallestPixels);
    if (pixels != pixels_) {
        pixels_ = pixels;
        digits_.setFont(sized(font(), pixels_));
    }
}

QRectF BigFigures::inkPlace() const {
    const qreal wide = digits_.width(text_);
    const qreal high = digits_.digitHeight();
    return {(width() - wide) / 2, (height() - high) / 2, wide, high};
}

void BigFigures::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(foregroundRole()));
    digits_.draw(painter, inkPlace().bottomLeft(), text_);
}

void BigFigures::resizeEvent(QResizeEvent*) {
    refit();
}

void BigFigures::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        measure();
    }
    QWidget::changeEvent(event);
}

}  // namespace korvane::views
