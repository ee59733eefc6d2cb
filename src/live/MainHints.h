// What the controls of the main window are for.
#pragma once

#include <string_view>

#include "controls/Control.h"

namespace korvane::live {

// What the control does and which bytes it sends, in one to three lines. Empty for a control that is never seen.
[[nodiscard]] std::string_view hintOf(const controls::Control& control);

}  // namespace korvane::live
