// The PWM table as its grid shows it, in milliseconds.
#pragma once

#include "maps/grid/MapDisplay.h"

namespace korvane::maps {

class PwmDisplay : public MapDisplay {
public:
    PwmDisplay(MapGrid& pwm, const MapContext& context) : MapDisplay(pwm, context, kPwmImages, Rewrite::Locked) {}

    [[nodiscard]] Reading readingOf(int cell, std::uint8_t count) const override;
};

}  // namespace korvane::maps
