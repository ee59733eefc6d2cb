// Where the main window's controls stand, in twips, as scripts see them. A view lays them out for a person by itself.
#pragma once

#include "live/FrmSarn2.h"

namespace korvane::live {

// Everything but the lamps, whose places follow the screen.
void layOutControls(FrmSarn2& window);

}  // namespace korvane::live
