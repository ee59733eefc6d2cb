// How the main window looks: the connection above, service buttons at the left, the dashboard in the middle, lamps and
// inputs at the right.
#pragma once

#include "live/FrmSarn2.h"
#include "views/WindowView.h"

namespace korvane::views {

// Texts grow with a window that is larger than they need; one that is too small scrolls.
class MainView : public WindowView {
public:
    MainView(live::FrmSarn2& window, FrameClock& clock);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void build(live::FrmSarn2& window);
    void orderTabs(live::FrmSarn2& window);
    void fitTexts();

    QWidget& content_;
};

}  // namespace korvane::views
