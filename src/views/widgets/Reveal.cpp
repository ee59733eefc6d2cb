#include "views/widgets/Reveal.h"

#include <QScrollArea>

namespace korvane::views {

void reveal(const QWidget& widget, const QRect& place) {
    for (auto* parent = widget.parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(parent); area != nullptr && area->widget() != nullptr) {
            const QPoint middle = widget.mapTo(area->widget(), place.center());
            area->ensureVisible(middle.x(), middle.y(), place.width(), place.height());
        }
    }
}

}  // namespace korvane::views
