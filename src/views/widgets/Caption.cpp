#include "views/widgets/Caption.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include "views/widgets/Palette.h"
#include "views/widgets/ScaledFont.h"

namespace korvane::views {

namespace {
constexpr double kScale = 0.85;
constexpr int kSmallestPixels = 8;
}  // namespace

Caption::Caption(const QString& text, QWidget* buddy, QWidget* parent) : QLabel(text, parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    if (buddy != nullptr) {
        setBuddy(buddy);
        QString plain = text;
        buddy->setAccessibleName(plain.remove(u'&'));
    }
}

QFont Caption::smallFont() const {
    return scaledFont(font(), kScale, kSmallestPixels);
}

QSize Caption::sizeHint() const {
    return QFontMetrics(smallFont()).size(Qt::TextShowMnemonic, text()) + QSize(1, 0);
}

void Caption::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(smallFont());
    painter.setPen(shades::names(*this));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

}  // namespace korvane::views
