// Making widgets that their parent owns.
#pragma once

#include <memory>
#include <utility>

namespace korvane::views {

// A new widget inside `parent`, which deletes it. Further arguments come before the parent in the widget's constructor.
template <class Widget, class Parent, class... Arguments>
Widget& child(Parent* parent, Arguments&&... arguments) {
    return *std::make_unique<Widget>(std::forward<Arguments>(arguments)..., parent).release();
}

}  // namespace korvane::views
