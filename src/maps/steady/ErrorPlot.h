// The error of the map over the time of a run, as a picture.
#pragma once

#include <string>

#include "controls/PictureBox.h"
#include "maps/steady/ErrorTrend.h"

namespace korvane::maps {

// Twips. The mean and the worst cell from the left edge, the start, to the right one, now; 0 at the bottom.
void drawErrors(controls::Drawing& drawing, const ErrorTrend& trend, int width, int height);
// The last point in words; empty before the first.
[[nodiscard]] std::string wordsOf(const ErrorTrend& trend);

}  // namespace korvane::maps
