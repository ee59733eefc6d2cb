// The places of the controls of the settings window.
#pragma once

#include "settings/MiscControls.h"

namespace korvane::settings {

inline constexpr int kMiscWidth = 7800;  // twips
inline constexpr int kMiscHeight = 6800;

// Puts each control into its frame and each frame onto its page, and gives all of them a place. The pages are hidden
// until a tab is picked.
void layOutControls(MiscControls& window);

// Brings one page into view and moves the others away; `page` counts from 0.
void showPage(MiscControls& window, int page);

}  // namespace korvane::settings
