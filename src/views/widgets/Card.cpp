#include "views/widgets/Card.h"

#include <QEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QPainter>

#include "views/widgets/Palette.h"
#include "views/widgets/ScaledFont.h"

namespace korvane::views {

namespace {
constexpr double kRadius = 7;
constexpr double kTileRadius = 5;
constexpr double kTitleScale = 0.92;
constexpr int kTitleTop = 7;
constexpr int kTitleGap = 4;
constexpr int kTightPadding = 4;
}  // namespace

QFont Card::titleFont() const {
    QFont small = scaledFont(font(), kTitleScale);
    small.setBold(true);
    return small;
}

int Card::titleHeight() const {
    return title().isEmpty() ? 0 : kTitleTop + QFontMetrics(titleFont()).height() + kTitleGap;
}

void Card::fitMargins() {
    setContentsMargins(0, 0, 0, 0);
    if (layout() != nullptr) {
        const int padding = tight_ ? kTightPadding : kPadding;
        layout()->setContentsMargins(kPadding, title().isEmpty() ? padding : titleHeight(), kPadding, padding);
    }
}

bool Card::event(QEvent* event) {
    const bool done = QGroupBox::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::ContentsRectChange) {
        fitMargins();
    }
    return done;
}

void Card::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitMargins();
    }
}

void Card::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(shades::border(palette()));
    painter.setBrush(shades::surface(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    if (!title().isEmpty()) {
        painter.setFont(titleFont());
        painter.setPen(isEnabled() ? shades::names(*this) : palette().color(QPalette::Disabled, QPalette::WindowText));
        const QRect place(kPadding, kTitleTop, width() - 2 * kPadding, QFontMetrics(titleFont()).height());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, title());
    }
}

void Tile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shades::tile(palette()));
    painter.drawRoundedRect(rect(), kTileRadius, kTileRadius);
}

}  // namespace korvane::views
