// The program's pictures, painted rather than loaded.
#pragma once

#include <QIcon>

namespace korvane::views {

// A dial with its needle up.
[[nodiscard]] QIcon windowIcon();

// A number that fills its frame.
[[nodiscard]] QIcon bigReadoutIcon();

}  // namespace korvane::views
