#include "views/frame/OpenButton.h"

#include <utility>

#include "views/widgets/Child.h"

namespace korvane::views {

QToolButton& makeOpenButton(const OpenButton& button, Binder& binder, QWidget* parent, std::function<void()> open) {
    auto& widget = child<QToolButton>(parent);
    widget.setObjectName(QLatin1String(button.name));
    widget.setText(QLatin1String(button.words));
    widget.setFocusPolicy(Qt::TabFocus);
    widget.setToolTip(QLatin1String(button.toolTip));
    QObject::connect(&widget, &QToolButton::clicked, &widget, [open = std::move(open), &binder] { binder.act(open); });
    return widget;
}

}  // namespace korvane::views
