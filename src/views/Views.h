// The windows' views, as one.
#pragma once

#include "views/frame/ViewHost.h"

namespace korvane::views {

// Makes the views of all windows of the program known to the host, and what they paint known to screen readers.
void addViews(ViewHost& host);

}  // namespace korvane::views
