// How the ignition limiter looks: sensor, limits and launch above, the three inputs below.
#pragma once

#include "maps/FrmMaps_ign_limiter.h"
#include "views/frame/FittedView.h"
#include "views/widgets/Card.h"

namespace korvane::views {

class LimiterView : public FittedView {
public:
    LimiterView(maps::FrmMaps_ign_limiter& window, FrameClock& clock);

private:
    [[nodiscard]] Card& makeBar();
    [[nodiscard]] Card& makeSensor();
    [[nodiscard]] Card& makeLimits();
    [[nodiscard]] Card& makeInput(int input);
    [[nodiscard]] Card& makeLaunch();

    maps::FrmMaps_ign_limiter& window_;
};

}  // namespace korvane::views
