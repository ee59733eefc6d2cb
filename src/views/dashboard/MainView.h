// The view of the main window: the connection above, service buttons at the left, the dashboard in the middle, lamps
// and inputs at the right.
#pragma once

#include "live/FrmSarn2.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class MainView : public FittedView {
public:
    MainView(live::FrmSarn2& window, FrameClock& clock);

protected:
    // Closes the map windows too.
    [[nodiscard]] bool mayClose() override;

private:
    void build(live::FrmSarn2& window);
    void orderTabs(live::FrmSarn2& window);

    platform::Machine& machine_;
    bool leaving_ = false;  // the user has agreed; the close of an open port takes a second
};

}  // namespace korvane::views
