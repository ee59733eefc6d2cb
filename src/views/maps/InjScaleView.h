// How the injector rescaling looks: both sizes and the button, and the frame that has nothing in it.
#pragma once

#include "maps/FrmInjScale.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

class Card;

class InjScaleView : public WindowView {
public:
    InjScaleView(maps::FrmInjScale& window, FrameClock& clock);

private:
    Card& makeSizes(maps::FrmInjScale& window);
};

}  // namespace korvane::views
