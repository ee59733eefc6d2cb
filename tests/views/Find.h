// A widget by the name of its control.
#pragma once

#include <QString>
#include <QWidget>

#include <stdexcept>
#include <string>

namespace korvane::views {

// Throws where there is none of this kind.
template <class Widget = QWidget>
[[nodiscard]] Widget& findIn(const QWidget& view, const std::string& name) {
    auto* const widget = dynamic_cast<Widget*>(view.findChild<QWidget*>(QString::fromStdString(name)));
    if (widget == nullptr) {
        throw std::runtime_error("no widget " + name);
    }
    return *widget;
}

}  // namespace korvane::views
