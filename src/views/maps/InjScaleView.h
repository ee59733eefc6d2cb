// The view of the injector rescaling: both sizes and the button, and the empty frame.
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
