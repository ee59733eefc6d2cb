// The places of the main window's controls, in twips, as scripts see them. The view has a layout of its own.
#pragma once

#include "live/FrmSarn2.h"

namespace korvane::live {

// Everything but the lamps, whose places follow the screen.
void layOutControls(FrmSarn2& window);

}  // namespace korvane::live
