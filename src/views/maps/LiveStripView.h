// The running engine in the header of a map window: names above, numbers below.
#pragma once

#include <QWidget>

#include "maps/notes/LiveStrip.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// With pulse and duty where the window has a fuel map.
[[nodiscard]] QWidget& makeLiveStrip(maps::LiveStrip& strip, bool fuel, Binder& binder, QWidget* parent);

}  // namespace korvane::views
