// Making widgets that their parent owns.
#pragma once

#include <memory>
#include <utility>

class QWidget;

namespace korvane::views {

// The parent of a widget that gets its owner later, when it is added to a layout or a scroll area.
inline constexpr QWidget* kNobody = nullptr;

// A new widget inside `parent`, which deletes it. Further arguments come before the parent in the widget's constructor.
template <class Widget, class Parent, class... Arguments>
Widget& child(Parent* parent, Arguments&&... arguments) {
    return *std::make_unique<Widget>(std::forward<Arguments>(arguments)..., parent).release();
}

}  // namespace korvane::views
