// The main window: the controls of the dashboard and of the connection, as the rooms below act on them.
#pragma once

#include "link/ConnectionPanel.h"
#include "live/SarnGauge.h"
#include "live/SarnMeter.h"
#include "platform/Controls.h"
#include "platform/PictureBox.h"
#include "platform/Window.h"

namespace korvane::live {

// Holds no logic of its own: the connection manager, the live update and the composition set the handlers.
class FrmSarn2 : public platform::Window, public link::ConnectionPanel {
public:
    explicit FrmSarn2(platform::Machine& machine);

    platform::Event<> Load;
    platform::Event<bool&> Unload;  // the argument starts false; true keeps the window open

    platform::CommandButton btnKartat, btnAsetukset, btnBackup, btnUploadEEPROM, btnDatalogTrend, btnTuningHelp;
    platform::ProgressBar prgEeprom;  // of an EEPROM image's backup or upload
    platform::CommandButton Command1, Command5, Command6, Command7, Command8;

    platform::Frame FrameValues;                              // around the value labels
    platform::ControlArray<platform::Label> lblValueName;     // 12, the names beside lblValue
    platform::ControlArray<platform::Label> lblValue;         // 12
    platform::Frame FrameMux;                                 // around the multiplexed channels
    platform::ControlArray<platform::Label> lblValueMuxName;  // 8, the channels' names
    platform::ControlArray<platform::Label> lblValueMux;      // 8: channels 12 to 19
    platform::Label lblAccel;
    platform::Frame FrameLeds;
    platform::ControlArray<platform::Image> imgLed;  // 16, top to bottom
    platform::ControlArray<platform::Label> lblLED;  // 16
    SarnMeter SarnMeterboost, SarnMeterRpm;
    SarnGauge SarnGauge3;
    platform::PictureBox picTrend, picTrend2;
    platform::CheckBox chkSlowTrend, chkUseSound, chkDatalog;
    platform::TextBox txtDatalogFile;

protected:
    void Form_Load() override { Load(); }
    bool Form_Unload() override;

private:
    void describeButtons();
    void describeValues();
    void placeTrends();
};

}  // namespace korvane::live
