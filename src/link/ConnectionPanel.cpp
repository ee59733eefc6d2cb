#include "link/ConnectionPanel.h"

namespace korvane::link {

ConnectionPanel::ConnectionPanel(controls::Window& owner) : window(owner) {
    btnConnect.Caption = "Connect";
    lblState.Caption = "Not connected";
    lblBytesRec.Caption = "0";
    lblPackets.Caption = "0";
    lblHWVer.Visible = false;
    Command2.Caption = "Restart device";
    FrameOptTest.Caption = "Opt test";
    Command3.Caption = "Command3";
    Command4.Caption = "Command4";
    Command3.setContainer(&FrameOptTest);
    Command4.setContainer(&FrameOptTest);
}

}  // namespace korvane::link
