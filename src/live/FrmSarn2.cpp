#include "live/FrmSarn2.h"

#include <array>
#include <string_view>

#include "live/ChannelTable.h"

namespace korvane::live {

namespace {

constexpr std::array<std::string_view, 16> kLampNames{
    "0",    "Choke", "StartHelp",  "Injection",    "Accelpump", "Ignition", "IgnChargeError", "IgnSparkError",
    "Idle", "9",     "Motorbrake", "Launch / ALS", "Stopped",   "Running",  "RPM Shift",      "RPM Limiter"};

constexpr int kTrendWidth = 9000;  // twips, until a view has a size for it
constexpr int kTrendHeight = 3600;
constexpr int kDialSize = 2700;  // twips

}  // namespace

FrmSarn2::FrmSarn2(platform::Machine& machine)
    : Window(machine, "frmSarn2"), ConnectionPanel(static_cast<controls::Window&>(*this)) {
    Caption = "Korvane Tuner v1.3 by Dulmer";
    describeButtons();
    describeValues();
    placeTrends();
}

bool FrmSarn2::Form_Unload() {
    bool stays = false;
    Unload(stays);
    return !stays;
}

void FrmSarn2::describeButtons() {
    btnKartat.Caption = "Kartat";
    btnAsetukset.Caption = "Asetukset";
    btnBackup.Caption = "Backup EEPROM";
    btnUploadEEPROM.Caption = "Upload EEPROM";
    btnDatalogTrend.Caption = "View datalog";
    btnTuningHelp.Caption = "TuningHelper";
    Command1.Caption = "open Largemap";
    Command5.Caption = "Ignition debug";
    Command6.ToolTipText = "Big readout";
    Command7.Caption = "openIgnLim";
    Command8.Caption = "Command8";
    chkSlowTrend.Caption = "Slow trend";
    chkUseSound.Caption = "Use Sound alarms";
    chkDatalog.Caption = "Save data to";
}

void FrmSarn2::describeValues() {
    FrameValues.Caption = "Live values";
    FrameMux.Caption = "Inputs";
    for (int i = 0; i < lblValue.count(); ++i) {
        lblValueName(i).Caption = kChannels[static_cast<std::size_t>(i)].caption;
        lblValue(i).Caption = "0";
        lblValueName(i).setContainer(&FrameValues);
        lblValue(i).setContainer(&FrameValues);
    }
    for (int i = 0; i < lblValueMux.count(); ++i) {
        lblValueMux(i).Caption = "0";
        lblValueMuxName(i).setContainer(&FrameMux);
        lblValueMux(i).setContainer(&FrameMux);
    }
    lblAccel.Caption = "0";
    for (int i = 0; i < lblLED.count(); ++i) {
        lblLED(i).Caption = kLampNames[static_cast<std::size_t>(i)];
        lblLED(i).setContainer(&FrameLeds);
        imgLed(i).setContainer(&FrameLeds);
    }
    SarnMeterboost.readProperties({});
    SarnMeterRpm.readProperties({});
    SarnMeterboost.Width = kDialSize;
    SarnMeterRpm.Width = kDialSize;
    SarnGauge3.Width = kDialSize;
    SarnGauge3.Height = kDialSize;
    SarnGauge3.Caption = "Throttle";
}

void FrmSarn2::placeTrends() {
    for (auto* picture : {&picTrend, &picTrend2}) {
        picture->BackColor = controls::kBlack;
        picture->Width = kTrendWidth;
        picture->Height = kTrendHeight;
    }
}

}  // namespace korvane::live
