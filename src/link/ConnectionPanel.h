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

    platform::ComboBox ComboPort, ComboBaud, ComboRefresh;
    platform::CommandButton btnConnect;
    platform::ProgressBar prgSettings;  // of the read of all settings
    platform::Label lblState, lblBytesRec, lblPackets, lblHWVer, lblFeatures;
    platform::CommandButton Command2;            // "Restart device"
    platform::Frame FrameOptTest;                // "Opt test"
    platform::CommandButton Command3, Command4;  // in it

    platform::MSComm MSComm1;
    platform::Timer Timer1;            // status line
    platform::Timer TimerRequestData;  // live poll
    platform::Timer TimerGetSettings;  // identity poll
    platform::Timer TimerAlarm;        // end of the alarm flash
    platform::Timer Timersound;        // does nothing
    platform::Timer TimerExit;         // delayed end of the program
    platform::Timer Timerofflinefeat;  // dormant simulation: identity
    platform::Timer TimerOffline;      // dormant simulation: live frames

    bool isConnected = false;
    std::array<std::string, 7> baudSettings;
    ReceiveMachine receiver;
    std::int32_t bytesReceived = 0;  // since the start of the program, never reset
};

}  // namespace korvane::link
