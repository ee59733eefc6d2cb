#include "views/widgets/values/NoteLine.h"

#include <QResizeEvent>

namespace korvane::views {

NoteLine::NoteLine(QWidget* parent) : QLabel(parent) {
    setAutoFillBackground(true);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
}

void NoteLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (event->oldSize().width() != event->size().width()) {
        updateGeometry();
    }
}

}  // namespace korvane::views
