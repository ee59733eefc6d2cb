// Registers the views of all windows.
#pragma once

#include "views/frame/ViewHost.h"

namespace korvane::views {

// Registers the views of all windows with the host, and the painted widgets with the toolkit's accessibility.
void addViews(ViewHost& host);

}  // namespace korvane::views
