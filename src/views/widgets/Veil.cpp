#include "views/widgets/Veil.h"

#include <QEvent>

namespace korvane::views {

Veil::Veil(QWidget* widget) : Dimmable(widget) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    widget->installEventFilter(this);
    resize(widget->size());
}

bool Veil::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        resize(parentWidget()->size());
    }
    return Dimmable::eventFilter(watched, event);
}

}  // namespace korvane::views
