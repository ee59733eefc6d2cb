// Finds the texts in a view that do not fit their widgets, for tests of layouts.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QWidget>

#include <string>
#include <vector>

#include "views/widgets/values/Readout.h"

namespace korvane::views {

inline bool hasText(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLabel*>(&widget) != nullptr || qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(&widget) != nullptr || qobject_cast<const QComboBox*>(&widget) != nullptr;
}

inline bool isWhole(const QWidget& widget) {
    if (const auto* readout = dynamic_cast<const Readout*>(&widget); readout != nullptr) {
        return !readout->isCut() && readout->shrink() > 0.8;
    }
    const QSize needed = widget.minimumSizeHint();
    return !hasText(widget) || (widget.width() >= needed.width() && widget.height() >= needed.height());
}

// A scrolled widget may be outside the widget around it.
inline bool isInside(const QWidget& widget) {
    return widget.parentWidget()->rect().contains(widget.geometry()) ||
           widget.parentWidget()->objectName() == "qt_scrollarea_viewport" || widget.inherits("QHeaderView");
}

inline std::vector<std::string> cutTexts(const QWidget& view) {
    std::vector<std::string> cut;
    for (const auto* widget : view.findChildren<QWidget*>()) {
        if (widget->isVisible() && !(isInside(*widget) && isWhole(*widget))) {
            cut.push_back(widget->objectName().toStdString() + "/" + widget->metaObject()->className());
        }
    }
    return cut;
}

}  // namespace korvane::views
