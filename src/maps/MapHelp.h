// How a map is edited, as the help button of a map window tells it.
#pragma once

#include "platform/Dialogs.h"

namespace korvane::maps {

void showMapHelp(platform::Dialogs& dialogs);

}  // namespace korvane::maps
