// The part of the main window that belongs to the serial connection.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "link/ReceiveMachine.h"
#include "platform/Controls.h"
#include "platform/MSComm.h"
#include "platform/Timer.h"

namespace korvane::link {

// Controls and members of frmSarn2 on which the connection manager, the dispatcher and the senders of commands work.
struct ConnectionPanel {
    explicit ConnectionPanel(platform::Window& window);

    platform::Window& window;

    platform::ComboBox ComboPort{window, "ComboPort"};
    platform::ComboBox ComboBaud{window, "ComboBaud"};
    platform::ComboBox ComboRefresh{window, "ComboRefresh"};
    platform::CommandButton btnConnect{window, "btnConnect"};
    platform::ProgressBar prgSettings{window, "prgSettings"};  // of the read of all settings
    platform::Label lblState{window, "lblState"};
    platform::Label lblBytesRec{window, "lblBytesRec"};
    platform::Label lblPackets{window, "lblPackets"};
    platform::Label lblHWVer{window, "lblHWVer"};
    platform::Label lblFeatures{window, "lblFeatures"};
    platform::CommandButton Command2{window, "Command2"};  // "Restart device"
    platform::Frame FrameOptTest{window, "FrameOptTest"};  // "Opt test"
    platform::CommandButton Command3{window, "Command3"};  // in FrameOptTest
    platform::CommandButton Command4{window, "Command4"};  // in FrameOptTest

    platform::MSComm MSComm1{window, "MSComm1"};
    platform::Timer Timer1{window, "Timer1", true, 1000};                       // status line
    platform::Timer TimerRequestData{window, "TimerRequestData", false, 200};   // live poll
    platform::Timer TimerGetSettings{window, "TimerGetSettings", false, 1000};  // identity poll
    platform::Timer TimerAlarm{window, "TimerAlarm", false, 0};                 // end of the alarm flash
    platform::Timer Timersound{window, "Timersound", true, 200};                // does nothing
    platform::Timer TimerExit{window, "TimerExit", false, 1000};                // delayed end of the program
    platform::Timer Timerofflinefeat{window, "Timerofflinefeat", false, 2000};  // dormant simulation: identity
    platform::Timer TimerOffline{window, "TimerOffline", false, 500};           // dormant simulation: live frames

    bool isConnected = false;
    std::array<std::string, 7> baudSettings;
    ReceiveMachine receiver;
    std::int32_t bytesReceived = 0;  // since the start of the program, never reset
};

}  // namespace korvane::link
