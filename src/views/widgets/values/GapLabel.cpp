#include "views/widgets/values/GapLabel.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace korvane::views {

GapLabel::GapLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const auto gap = text.indexOf(QStringLiteral("   "));
    before_ = text.left(gap).trimmed();
    behind_ = gap < 0 ? QString() : text.mid(gap).trimmed();
}

void GapLabel::setBox(QWidget& box) {
    box_ = &box;
    place();
}

int GapLabel::space() const {
    return fontMetrics().horizontalAdvance(u' ') * 2;
}

int GapLabel::boxLeft() const {
    return fontMetrics().horizontalAdvance(before_) + space();
}

QSize GapLabel::sizeHint() const {
    const QSize box = box_ != nullptr ? box_->sizeHint() : QSize();
    const int rest = behind_.isEmpty() ? 0 : space() + fontMetrics().horizontalAdvance(behind_) + 1;
    return {boxLeft() + box.width() + rest, std::max(box.height(), fontMetrics().height())};
}

void GapLabel::place() {
    if (box_ != nullptr) {
        const QSize size = box_->sizeHint();
        box_->setGeometry(boxLeft(), (height() - size.height()) / 2, size.width(), size.height());
    }
}

void GapLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, before_);
    const int behind = box_ != nullptr ? box_->geometry().right() + 1 + space() : boxLeft();
    painter.drawText(rect().adjusted(behind, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, behind_);
}

void GapLabel::resizeEvent(QResizeEvent*) {
    place();
}

void GapLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        place();
    }
}

bool GapLabel::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QLabel::event(event);
}

}  // namespace korvane::views
