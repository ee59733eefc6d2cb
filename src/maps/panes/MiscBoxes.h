// What may be typed into the misc boxes.
#pragma once

#include "controls/Controls.h"

namespace korvane::maps {

// Sets the key and focus events of txtMisc: numbers only, within the limits of each box when the focus leaves it. The
// ignition offset's tool-tip is its raw byte.
void describeMiscBoxes(controls::ControlArray<controls::TextBox>& txtMisc);

// The character that a misc box takes for `character`: 0 drops it.
[[nodiscard]] int miscCharacter(int character);

}  // namespace korvane::maps
