// A plot of values over time, for any picture box.
#pragma once

#include "controls/PictureBox.h"

namespace korvane::controls {

// Where a value stands in a picture of this size in twips: time from the left edge to the right one, 0 at the bottom.
struct PlotFrame {
    double width;
    double height;
    double seconds;
    double top;  // the value at the upper edge; what is above it stands there

    [[nodiscard]] Point at(double second, double value) const;
};

// The upper edge for values up to `most`: the next of 1, 2, 5, 10, 20, 50 and so on that is not below it.
[[nodiscard]] double plotTop(double most);

// As a coordinate; what does not fit is cut off.
[[nodiscard]] std::int16_t plotTwips(double value);

}  // namespace korvane::controls
