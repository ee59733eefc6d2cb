#include "views/widgets/Dimmable.h"

#include <QEvent>
#include <QPainter>

namespace korvane::views {

namespace {
constexpr float kShare = 0.42F;  // of the ground; black on white can still be read well
}

void Dimmable::setDimmed(bool dimmed) {
    if (dimmed != dimmed_) {
        dimmed_ = dimmed;
        update();
    }
}

bool Dimmable::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Paint && dimmed_) {
        QColor veil = ground();
        veil.setAlphaF(kShare);
        QPainter(this).fillRect(rect(), veil);
    }
    return handled;
}

}  // namespace korvane::views
