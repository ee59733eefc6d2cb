#include "views/widgets/Dimmable.h"

#include <QEvent>
#include <QPainter>

namespace korvane::views {

namespace {
constexpr float kShare = 0.42F;  // of the ground; black on white can still be read well
}

void Dimmable::setDimmed(bool dimmed) {
    set(dimmed_, dimmed);
}

void Dimmable::setOutdated(bool outdated) {
    set(outdated_, outdated);
}

void Dimmable::set(bool& reason, bool value) {
    const bool before = isDimmed();
    reason = value;
    if (isDimmed() != before) {
        update();
    }
}

bool Dimmable::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Paint && isDimmed()) {
        QColor veil = ground();
        veil.setAlphaF(kShare);
        QPainter(this).fillRect(rect(), veil);
    }
    return handled;
}

}  // namespace korvane::views
