// The main window: the controls of the dashboard and of the connection.
#pragma once

#include "controls/Controls.h"
#include "controls/PictureBox.h"
#include "controls/Window.h"
#include "link/ConnectionPanel.h"
#include "live/SarnGauge.h"
#include "live/SarnMeter.h"
#include "live/TrendSpan.h"
#include "live/ValueUnits.h"
#include "logs/LogCounts.h"

namespace korvane::live {

// Holds no logic of its own: link::Connection, live::LiveUpdate, trend::MainTrends and program::Program set the
// handlers.
class FrmSarn2 : public controls::Window, public link::ConnectionPanel {
public:
    explicit FrmSarn2(platform::Machine& machine);

    controls::Event<> Load;
    controls::Event<bool&> Unload;  // the argument starts false; true keeps the window open

    controls::CommandButton btnKartat{*this, "btnKartat", "Kartat"};
    controls::CommandButton btnAsetukset{*this, "btnAsetukset", "Asetukset"};
    controls::CommandButton btnBackup{*this, "btnBackup", "Backup EEPROM"};
    controls::CommandButton btnUploadEEPROM{*this, "btnUploadEEPROM", "Upload EEPROM"};
    controls::CommandButton btnDatalogTrend{*this, "btnDatalogTrend", "View datalog"};
    controls::CommandButton btnTuningHelp{*this, "btnTuningHelp", "TuningHelper"};
    controls::ProgressBar prgEeprom{*this, "prgEeprom"};  // of an EEPROM image's backup or upload
    controls::CommandButton Command1{*this, "Command1", "open Largemap"};
    controls::CommandButton Command5{*this, "Command5", "Ignition debug"};
    controls::CommandButton Command6{*this, "Command6"};
    controls::CommandButton Command7{*this, "Command7", "openIgnLim"};
    controls::CommandButton Command8{*this, "Command8", "Command8"};

    controls::Frame FrameValues{*this, "FrameValues", "Live values"};                 // around the value labels
    controls::ControlArray<controls::Label> lblValueName{*this, "lblValueName", 12};  // the names beside lblValue
    controls::ControlArray<controls::Label> lblValue{*this, "lblValue", 12};
    controls::Frame FrameMux{*this, "FrameMux", "Inputs"};  // around the multiplexed channels
    controls::ControlArray<controls::Label> lblValueMuxName{*this, "lblValueMuxName", 8};  // the channels' names
    controls::ControlArray<controls::Label> lblValueMux{*this, "lblValueMux", 8};          // channels 12 to 19
    controls::Label lblAccel{*this, "lblAccel", "0"};
    controls::Frame FrameLeds{*this, "FrameLeds"};
    controls::ControlArray<controls::Image> imgLed{*this, "imgLed", 16};  // top to bottom
    controls::ControlArray<controls::Label> lblLED{*this, "lblLED", 16};
    SarnMeter SarnMeterboost{*this, "SarnMeterboost"};
    SarnMeter SarnMeterRpm{*this, "SarnMeterRpm"};
    SarnGauge SarnGauge3{*this, "SarnGauge3"};
    controls::PictureBox picTrend{*this, "picTrend"};
    controls::PictureBox picTrend2{*this, "picTrend2"};
    controls::CheckBox chkSlowTrend{*this, "chkSlowTrend", "Slow trend"};
    controls::CheckBox chkUseSound{*this, "chkUseSound", "Use Sound alarms"};
    controls::CheckBox chkDatalog{*this, "chkDatalog"};
    controls::TextBox txtDatalogFile{*this, "txtDatalogFile"};
    logs::LogCounts logCounts;  // shown beside them
    ValueUnits valueUnits;      // beside lblValue
    TrendSpan trendSpan;        // of picTrend
    TrendSpan trendSpan2;

protected:
    void Form_Load() override { Load(); }
    bool Form_Unload() override;
    [[nodiscard]] bool takesKey(int keyCode, int shift) override { return keepWindows.takesKey(keyCode, shift); }

private:
    void describeValues();
    void describeInstruments();
};

}  // namespace korvane::live
