// The column of status lamps.
#pragma once

#include "live/FrmSarn2.h"

namespace korvane::live {

// Places the sixteen lamps under each other with their labels beside them, all grey, and fits the frame around them.
// A lamp's size follows the screen's height (twips) up to a limit.
void layOutLamps(FrmSarn2& window, int screenHeight);

}  // namespace korvane::live
