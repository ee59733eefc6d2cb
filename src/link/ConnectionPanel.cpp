#include "link/ConnectionPanel.h"

#include "platform/Machine.h"

namespace korvane::link {

ConnectionPanel::ConnectionPanel(controls::Window& owner)
    : window(owner),
      verify(owner.machine().preferences),
      linkState(owner.machine().pump, MSComm1, TimerRequestData, receiver),
      portDoubt(owner.machine().pump, linkState),
      linkHistory(owner.machine().pump, linkState) {
    lblHWVer.Visible = false;
    Command3.setContainer(&FrameOptTest);
    Command4.setContainer(&FrameOptTest);
}

}  // namespace korvane::link
