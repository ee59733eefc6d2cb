#include "link/ConnectionPanel.h"

namespace korvane::link {

ConnectionPanel::ConnectionPanel(controls::Window& owner) : window(owner) {
    lblHWVer.Visible = false;
    Command3.setContainer(&FrameOptTest);
    Command4.setContainer(&FrameOptTest);
}

}  // namespace korvane::link
