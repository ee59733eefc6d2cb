// The line of the main window about restore points.
#pragma once

#include <QWidget>

#include "link/KeepNotice.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Takes no room while there is nothing to say, and that of one row otherwise.
[[nodiscard]] QWidget& makeKeepLine(link::KeepNotice& notice, Binder& binder, QWidget* parent);

}  // namespace korvane::views
