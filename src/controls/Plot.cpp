#include "controls/Plot.h"

#include <algorithm>
#include <cmath>

namespace korvane::controls {

std::int16_t plotTwips(double value) {
    return static_cast<std::int16_t>(std::clamp(std::lround(value), -32000L, 32000L));
}

Point PlotFrame::at(double second, double value) const {
    return {plotTwips(width * second / seconds), plotTwips(height * (1.0 - std::min(value / top, 1.0)))};
}

double plotTop(double most) {
    double decade = 1.0;
    while (most > 5.0 * decade) {
        decade *= 10.0;
    }
    if (most <= decade) {
        return decade;
    }
    return most <= 2.0 * decade ? 2.0 * decade : 5.0 * decade;
}

}  // namespace korvane::controls
