#include "live/FrmSarn2.h"

#include <array>
#include <string_view>

#include "live/ChannelTable.h"
#include "live/MainLayout.h"

namespace korvane::live {

namespace {

constexpr std::array<std::string_view, 16> kLampNames{
    "0",    "Choke", "StartHelp",  "Injection",    "Accelpump", "Ignition", "IgnChargeError", "IgnSparkError",
    "Idle", "9",     "Motorbrake", "Launch / ALS", "Stopped",   "Running",  "RPM Shift",      "RPM Limiter"};

}  // namespace

FrmSarn2::FrmSarn2(platform::Machine& machine)
    : Window(machine, "frmSarn2"), ConnectionPanel(static_cast<controls::Window&>(*this)) {
    Caption = "Korvane Tuner v1.3 by Dulmer";
    chkDatalog.Caption = "Save data to";
    Command6.ToolTipText = "Big readout";
    describeValues();
    describeInstruments();
    layOutControls(*this);
}

bool FrmSarn2::Form_Unload() {
    bool stays = false;
    Unload(stays);
    return !stays;
}

void FrmSarn2::describeValues() {
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
    for (int i = 0; i < lblLED.count(); ++i) {
        lblLED(i).Caption = kLampNames[static_cast<std::size_t>(i)];
        lblLED(i).setContainer(&FrameLeds);
        imgLed(i).setContainer(&FrameLeds);
    }
}

void FrmSarn2::describeInstruments() {
    SarnMeterboost.readProperties({});
    SarnMeterRpm.readProperties({});
    SarnGauge3.Caption = "Throttle";
    picTrend.BackColor = controls::kBlack;
    picTrend2.BackColor = controls::kBlack;
}

}  // namespace korvane::live
