// The fixed texts of the settings window.
#pragma once

#include "settings/MiscControls.h"

namespace korvane::settings {

// Captions, tabs, rows of the lists and tool-tips, and how a control differs from others of its kind from the start.
void describeControls(MiscControls& window);

}  // namespace korvane::settings
