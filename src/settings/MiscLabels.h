// What the boxes of the settings window are called.
#pragma once

#include "settings/MiscControls.h"

namespace korvane::settings {

// Gives each box and each list that is saved the name that stands beside it, or over its column with the unit of the
// row.
void labelControls(MiscControls& window);

}  // namespace korvane::settings
