// Keys of the toolkit as the program's handlers name them.
#pragma once

#include <QKeyEvent>

namespace korvane::views {

// The key code; 0 for a key that has none. The numeric pad's keys count as those of the main block.
[[nodiscard]] int keyCodeOf(const QKeyEvent& event);

// The Shift argument. A Shift that is only needed to reach + or - on this keyboard does not count.
[[nodiscard]] int shiftOf(const QKeyEvent& event);
[[nodiscard]] int shiftOf(Qt::KeyboardModifiers modifiers);

// As the Button argument names them: 1 left, 2 right, 4 middle.
[[nodiscard]] int buttonNumber(Qt::MouseButton button);

// The character that the key makes, backspace, return and escape among them; 0 for a key that makes none.
[[nodiscard]] int characterOf(const QKeyEvent& event);

}  // namespace korvane::views
