#include "link/ConnectionPanel.h"

namespace korvane::link {

ConnectionPanel::ConnectionPanel(platform::Window& owner)
    : window(owner),
      ComboPort(owner, "ComboPort"),
      ComboBaud(owner, "ComboBaud"),
      ComboRefresh(owner, "ComboRefresh"),
      btnConnect(owner, "btnConnect"),
      prgSettings(owner, "prgSettings"),
      lblState(owner, "lblState"),
      lblBytesRec(owner, "lblBytesRec"),
      lblPackets(owner, "lblPackets"),
      lblHWVer(owner, "lblHWVer"),
      lblFeatures(owner, "lblFeatures"),
      Command2(owner, "Command2"),
      FrameOptTest(owner, "FrameOptTest"),
      Command3(owner, "Command3"),
      Command4(owner, "Command4"),
      MSComm1(owner, "MSComm1"),
      Timer1(owner, "Timer1", true, 1000),
      TimerRequestData(owner, "TimerRequestData", false, 200),
      TimerGetSettings(owner, "TimerGetSettings", false, 1000),
      TimerAlarm(owner, "TimerAlarm", false, 0),
      Timersound(owner, "Timersound", true, 200),
      TimerExit(owner, "TimerExit", false, 1000),
      Timerofflinefeat(owner, "Timerofflinefeat", false, 2000),
      TimerOffline(owner, "TimerOffline", false, 500) {
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
