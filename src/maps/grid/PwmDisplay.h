// The PWM table as its grid shows it, in milliseconds.
#pragma once

#include <string>

#include "maps/grid/MapDisplay.h"

namespace korvane::maps {

class PwmDisplay : public MapDisplay {
public:
    PwmDisplay(MapGrid& pwm, const MapContext& context) : MapDisplay(pwm, context, kPwmImages, Rewrite::Locked) {}

private:
    [[nodiscard]] Reading read(int cell, std::uint8_t count, std::string& toolTip) override;
};

}  // namespace korvane::maps
