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

    platform::CommandButton btnKartat{*this, "btnKartat"};
    platform::CommandButton btnAsetukset{*this, "btnAsetukset"};
    platform::CommandButton btnBackup{*this, "btnBackup"};
    platform::CommandButton btnUploadEEPROM{*this, "btnUploadEEPROM"};
    platform::CommandButton btnDatalogTrend{*this, "btnDatalogTrend"};
    platform::CommandButton btnTuningHelp{*this, "btnTuningHelp"};
    platform::ProgressBar prgEeprom{*this, "prgEeprom"};  // of an EEPROM image's backup or upload
    platform::CommandButton Command1{*this, "Command1"};
    platform::CommandButton Command5{*this, "Command5"};
    platform::CommandButton Command6{*this, "Command6"};
    platform::CommandButton Command7{*this, "Command7"};
    platform::CommandButton Command8{*this, "Command8"};

    platform::Frame FrameValues{*this, "FrameValues"};                                // around the value labels
    platform::ControlArray<platform::Label> lblValueName{*this, "lblValueName", 12};  // the names beside lblValue
    platform::ControlArray<platform::Label> lblValue{*this, "lblValue", 12};
    platform::Frame FrameMux{*this, "FrameMux"};  // around the multiplexed channels
    platform::ControlArray<platform::Label> lblValueMuxName{*this, "lblValueMuxName", 8};  // the channels' names
    platform::ControlArray<platform::Label> lblValueMux{*this, "lblValueMux", 8};          // channels 12 to 19
    platform::Label lblAccel{*this, "lblAccel"};
    platform::Frame FrameLeds{*this, "FrameLeds"};
    platform::ControlArray<platform::Image> imgLed{*this, "imgLed", 16};  // top to bottom
    platform::ControlArray<platform::Label> lblLED{*this, "lblLED", 16};
    SarnMeter SarnMeterboost{*this, "SarnMeterboost"};
    SarnMeter SarnMeterRpm{*this, "SarnMeterRpm"};
    SarnGauge SarnGauge3{*this, "SarnGauge3"};
    platform::PictureBox picTrend{*this, "picTrend"};
    platform::PictureBox picTrend2{*this, "picTrend2"};
    platform::CheckBox chkSlowTrend{*this, "chkSlowTrend"};
    platform::CheckBox chkUseSound{*this, "chkUseSound"};
    platform::CheckBox chkDatalog{*this, "chkDatalog"};
    platform::TextBox txtDatalogFile{*this, "txtDatalogFile"};

protected:
    void Form_Load() override { Load(); }
    bool Form_Unload() override;

private:
    void describeButtons();
    void describeValues();
    void placeTrends();
};

}  // namespace korvane::live
