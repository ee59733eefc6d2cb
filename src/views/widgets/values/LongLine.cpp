#include "views/widgets/values/LongLine.h"

#include <QEvent>

#include "views/widgets/PlainTip.h"

namespace korvane::views {

LongLine::LongLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize LongLine::sizeHint() const {
    return {fontMetrics().horizontalAdvance(words_) + 2, QLabel::sizeHint().height()};
}

void LongLine::setWords(const QString& words) {
    if (words != words_) {
        words_ = words;
        updateGeometry();
    }
    setAccessibleName(words);
    setToolTip(plainTip(words));
    fit();
}

void LongLine::fit() {
    const QString shown = fontMetrics().elidedText(words_, Qt::ElideRight, width());
    if (shown != text()) {
        setText(shown);
    }
}

void LongLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void LongLine::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fit();
    }
}

}  // namespace korvane::views
