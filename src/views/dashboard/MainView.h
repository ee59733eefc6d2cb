// The view of the main window: the connection above, service buttons at the left, the dashboard in the middle, lamps
// and inputs at the right.
#pragma once

#include "live/FrmSarn2.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class MainView : public FittedView {
public:
    MainView(live::FrmSarn2& window, FrameClock& clock);

private:
    void build(live::FrmSarn2& window);
    void orderTabs(live::FrmSarn2& window);
};

}  // namespace korvane::views
