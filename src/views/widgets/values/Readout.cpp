#include "views/widgets/values/Readout.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

#include "views/widgets/Palette.h"
#include "views/widgets/PlainTip.h"
#include "views/widgets/ScaledFont.h"

namespace korvane::views {

namespace {
constexpr double kSmallest = 0.62;     // of the usual size, for texts longer than the reserve
constexpr double kGrownHeight = 0.62;  // of the widget's height, for a digit
constexpr double kNarrowest = 0.85;    // of the usual width, for one that grows
constexpr int kSmallestPixels = 8;
}  // namespace

Readout::Readout(const Look& look, QWidget* parent)
    : PaintedWidget(QSizePolicy::Preferred, look.growing ? QSizePolicy::Preferred : QSizePolicy::Fixed, parent),
      look_(look),
      narrowest_(look.growing ? kNarrowest : 1) {
    refit();
}

void Readout::setText(const QString& text) {
    if (text != text_) {
        text_ = text;
        fit();
        update();
    }
}

void Readout::setReserve(const QString& longest) {
    if (longest != reserve_) {
        reserve_ = longest;
        updateGeometry();
        refit();
    }
}

int Readout::usualPixels() const {
    return scaledPixels(font(), look_.scale, kSmallestPixels);
}

QFont Readout::fontOf(int pixels) const {
    QFont sized = font();
    sized.setPixelSize(pixels);
    sized.setBold(look_.bold);
    return sized;
}

QSize Readout::sizeHint() const {
    TabularText usual;
    usual.setFont(fontOf(usualPixels()));
    const QString& widest = reserve_.isEmpty() ? text_ : reserve_;
    return {static_cast<int>(std::ceil(usual.width(widest))) + 2,
            static_cast<int>(std::ceil(usual.ascent() + usual.descent()))};
}

QSize Readout::minimumSizeHint() const {
    const QSize usual = sizeHint();
    return {static_cast<int>(usual.width() * narrowest_), usual.height()};
}

// The size at which the reserve fills the widget, for one that grows.
void Readout::refit() {
    pixels_ = usualPixels();
    digits_.setFont(fontOf(pixels_));
    if (look_.growing && width() > 0 && !reserve_.isEmpty()) {
        const double byWidth = width() / std::max(digits_.width(reserve_), 1.0);
        const double byHeight = height() * kGrownHeight / std::max(digits_.digitHeight(), 1.0);
        if (const double growth = std::min(byWidth, byHeight); growth > 1) {
            pixels_ = static_cast<int>(pixels_ * growth);
            digits_.setFont(fontOf(pixels_));
        }
    }
    fit();
}

void Readout::fit() {
    const qreal wanted = digits_.width(text_);
    const qreal room = width();
    shrink_ = wanted > room && !look_.elided ? std::max(room / wanted, kSmallest) : 1;
    cut_ = wanted * shrink_ > room + 1;
    shown_ = text_;
    if (cut_) {
        shown_ = QFontMetricsF(fontOf(pixels_)).elidedText(text_, Qt::ElideRight, room / shrink_);
    }
}

QColor Readout::ground() const {
    const bool own = palette().isBrushSet(QPalette::Active, QPalette::Window) && testAttribute(Qt::WA_SetPalette);
    return own                               ? palette().color(QPalette::Window)
           : look_.ground == Ground::Surface ? shades::surface(palette())
                                             : shades::tile(palette());
}

void Readout::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground());
    painter.setPen(look_.muted && isEnabled() ? shades::names(*this) : palette().color(foregroundRole()));
    const qreal width = digits_.width(shown_) * shrink_;
    const qreal left = look_.alignment.testFlag(Qt::AlignRight)     ? this->width() - width
                       : look_.alignment.testFlag(Qt::AlignHCenter) ? (this->width() - width) / 2
                                                                    : 0;
    const qreal baseline = (height() + (digits_.ascent() - digits_.descent()) * shrink_) / 2;
    painter.translate(left, baseline);
    painter.scale(shrink_, shrink_);
    digits_.draw(painter, {}, shown_);
}

bool Readout::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && look_.elided && !text_.isEmpty()) {
        const QString tip = toolTip().isEmpty() ? text_ : text_ + u'\n' + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainTip(tip), this);
        return true;
    }
    return PaintedWidget::event(event);
}

void Readout::resizeEvent(QResizeEvent*) {
    refit();
}

void Readout::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        refit();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

}  // namespace korvane::views
