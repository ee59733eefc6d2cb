#include "views/widgets/OneRowLabel.h"

#include <QEvent>
#include <QPainter>

#include "views/widgets/PlainTip.h"

namespace korvane::views {

OneRowLabel::OneRowLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void OneRowLabel::setWords(const QString& text) {
    setText(text);
    fitTip();
}

QString OneRowLabel::row() const {
    return text().replace(QLatin1Char('\n'), QStringLiteral("   "));
}

bool OneRowLabel::isCut() const {
    return fontMetrics().horizontalAdvance(row()) > contentsRect().width();
}

QSize OneRowLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(row()), fontMetrics().height()};
}

// The label itself paints what it can select.
void OneRowLabel::paintEvent(QPaintEvent* event) {
    if (row() == text() && !isCut()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(row(), Qt::ElideRight, contentsRect().width()));
}

void OneRowLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fitTip();
}

void OneRowLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitTip();
    }
}

void OneRowLabel::fitTip() {
    setToolTip(isCut() ? plainTip(text()) : QString());
}

}  // namespace korvane::views
