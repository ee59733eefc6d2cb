// The part of the main window that belongs to the serial connection.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/Controls.h"
#include "controls/MSComm.h"
#include "controls/Timer.h"
#include "link/EcuEeprom.h"
#include "link/EcuMap.h"
#include "link/EcuMisc.h"
#include "link/FrameWitness.h"
#include "link/KeepNotice.h"
#include "link/KeepWindows.h"
#include "link/LinkHistory.h"
#include "link/LinkState.h"
#include "link/PortDoubt.h"
#include "link/ReadTally.h"
#include "link/ReceiveMachine.h"
#include "link/ReplyDiversion.h"
#include "link/VerifySwitch.h"

namespace korvane::link {

// Controls and members of frmSarn2 on which the connection manager, the dispatcher and the senders of commands work.
struct ConnectionPanel {
    explicit ConnectionPanel(controls::Window& window);

    controls::Window& window;

    controls::ComboBox ComboPort{window, "ComboPort"};
    controls::ComboBox ComboBaud{window, "ComboBaud"};
    controls::ComboBox ComboRefresh{window, "ComboRefresh"};
    controls::CommandButton btnConnect{window, "btnConnect", "Connect"};
    controls::ProgressBar prgSettings{window, "prgSettings"};  // of the read of all settings
    ReadTally settingsTally;
    controls::Label lblState{window, "lblState", "Not connected"};
    controls::Label lblBytesRec{window, "lblBytesRec", "0"};
    controls::Label lblPackets{window, "lblPackets", "0"};
    controls::Label lblHWVer{window, "lblHWVer"};
    controls::Label lblFeatures{window, "lblFeatures"};
    controls::CommandButton Command2{window, "Command2", "Restart device"};
    controls::Frame FrameOptTest{window, "FrameOptTest", "Opt test"};
    controls::CommandButton Command3{window, "Command3", "Command3"};  // in FrameOptTest
    controls::CommandButton Command4{window, "Command4", "Command4"};  // in FrameOptTest

    controls::MSComm MSComm1{window, "MSComm1"};
    controls::Timer Timer1{window, "Timer1", true, 1000};                       // status line
    controls::Timer TimerRequestData{window, "TimerRequestData", false, 200};   // live poll
    controls::Timer TimerGetSettings{window, "TimerGetSettings", false, 1000};  // identity poll
    controls::Timer TimerAlarm{window, "TimerAlarm", false, 0};                 // end of the alarm flash
    controls::Timer Timersound{window, "Timersound", true, 200};                // does nothing
    controls::Timer TimerExit{window, "TimerExit", false, 1000};                // delayed end of the program
    controls::Timer Timerofflinefeat{window, "Timerofflinefeat", false, 2000};  // simulation, off: identity
    controls::Timer TimerOffline{window, "TimerOffline", false, 500};           // simulation, off: live frames

    bool isConnected = false;
    std::array<std::string, 7> baudSettings;
    ReceiveMachine receiver;
    FrameWitnesses witnesses;  // of each frame that the dispatcher gets
    ReplyDiversion diversion;  // of replies that act nowhere
    VerifySwitch verify;       // whether sends are read back
    EcuMaps ecuMaps;
    EcuEeprom ecuEeprom;  // of this connection
    EcuMisc ecuMisc;
    int openings = 0;  // of the port, since the start of the program
    KeepWindows keepWindows;
    KeepNotice keepNotice;
    std::int32_t bytesReceived = 0;  // since the start of the program, never reset
    LinkState linkState;             // of MSComm1, TimerRequestData and the receiver
    PortDoubt portDoubt;             // of linkState
    LinkHistory linkHistory;         // of linkState
};

}  // namespace korvane::link
