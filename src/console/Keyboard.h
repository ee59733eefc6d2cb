// Keys, as a user types them into a window.
#pragma once

#include <string_view>

#include "controls/Control.h"
#include "controls/Controls.h"

namespace korvane::console {

// Each gives the control the focus if it does not have it. A control that is destroyed meanwhile gets no more keys.

// One key: down, press where the key makes a character, up; the last goes to the control that has the focus by then.
void pressKey(controls::Control& control, int keyCode, int shift);

// Empties the box and types `text` key by key. A locked box gets the keys and stays as it is.
void typeText(controls::TextBox& box, std::string_view text);

// The character that a key makes with the Shift bits, or 0.
[[nodiscard]] int characterOf(int keyCode, int shift);

}  // namespace korvane::console
