// The controls of the settings window under their own names, page by page.
#pragma once

#include <cstdint>

#include "platform/Controls.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/Timer.h"
#include "platform/Window.h"

namespace korvane::settings {

inline constexpr int kPages = 9;

// Holds no logic; each frame is one group of settings with its own save button.
class MiscControls : public platform::Window {
public:
    explicit MiscControls(platform::Machine& machine);

    platform::TabStrip tbsOptions{*this, "tbsOptions"};
    platform::ControlArray<platform::PictureBox> picOptions{*this, "picOptions", kPages};  // the page of tab i + 1
    platform::CommandButton btnLoad{*this, "btnLoad"};
    platform::CommandButton btnReadFromFile{*this, "btnReadFromFile"};
    platform::ProgressBar prgLoad{*this, "prgLoad"};  // of a full read
    platform::Timer TimeOutTimer{*this, "TimeOutTimer", true, 1000};
    platform::Timer TimerInitialGetData{*this, "TimerInitialGetData", false, 100};

    std::int16_t TimeOutCount = 0;  // ticks of TimeOutTimer; nothing reads it
    std::int32_t LambdaType = 0;    // WBO2_MODE_OFF as last received

    // 1 "Ignition"
    platform::Frame FrameIdleAdv{*this, "FrameIdleAdv"};
    platform::ControlArray<platform::TextBox> txtIdleAdv{*this, "txtIdleAdv", 5};  // 500 to 900 rpm
    platform::CommandButton btnSaveIdleAdv{*this, "btnSaveIdleAdv"};
    platform::Frame FrameIgnEdge{*this, "FrameIgnEdge"};
    platform::TextBox txtIgnEdge{*this, "txtIgnEdge"};
    platform::CommandButton btnIgnEdge{*this, "btnIgnEdge"};
    platform::Frame FrameChargeTime{*this, "FrameChargeTime"};
    platform::TextBox txtchargetime{*this, "txtchargetime"};  // scaled
    platform::CommandButton btnSaveChargeTime{*this, "btnSaveChargeTime"};
    platform::Frame FrameMotorbrake{*this, "FrameMotorbrake"};
    platform::TextBox txtMotorBrakeLow{*this, "txtMotorBrakeLow"};
    platform::TextBox txtMotorBrakeHigh{*this, "txtMotorBrakeHigh"};
    platform::CommandButton btnSaveMotorbrake{*this, "btnSaveMotorbrake"};

    // 2 "Injection"
    platform::Frame FrameInjMode{*this, "FrameInjMode"};
    platform::TextBox txtInjMode{*this, "txtInjMode"};
    platform::TextBox txtInjMultiplier{*this, "txtInjMultiplier"};
    platform::CommandButton btnInjMode{*this, "btnInjMode"};
    platform::Frame FrameInj8ms{*this, "FrameInj8ms"};
    platform::ControlArray<platform::OptionButton> optInj8ms{*this, "optInj8ms", 4};  // shown only
    platform::Frame FrameInjAdv{*this, "FrameInjAdv"};
    platform::ControlArray<platform::TextBox> txtInjAdv{*this, "txtInjAdv", 16};  // 1000 to 8500 rpm
    platform::CommandButton btnSaveInjAdv{*this, "btnSaveInjAdv"};
    platform::Frame FrameStartHelp{*this, "FrameStartHelp"};
    platform::TextBox txtStart{*this, "txtStart"};  // scaled
    platform::TextBox txtStartHelpLen{*this, "txtStartHelpLen"};
    platform::TextBox txtRyyppy{*this, "txtRyyppy"};  // scaled
    platform::TextBox txtChokeEnd{*this, "txtChokeEnd"};
    platform::CommandButton btnStartHelp{*this, "btnStartHelp"};
    platform::Frame FrameVolt{*this, "FrameVolt"};
    platform::ControlArray<platform::TextBox> txtVolt{*this, "txtVolt", 4};  // scaled
    platform::CommandButton btnSaveVolt{*this, "btnSaveVolt"};
    platform::Frame FrameAccel{*this, "FrameAccel"};
    platform::ControlArray<platform::TextBox> txtAccel{*this, "txtAccel", 10};  // scaled without a Tag
    platform::TextBox txtAccelDelay{*this, "txtAccelDelay"};
    platform::CommandButton btnAccel{*this, "btnAccel"};

    // 3 "PWM, Boost, idle"
    platform::Frame FramePWM1{*this, "FramePWM1"};
    platform::Frame FramePWM2{*this, "FramePWM2"};
    platform::ControlArray<platform::OptionButton> OptionPWM1{*this, "OptionPWM1", 4};
    platform::ControlArray<platform::OptionButton> OptionPWM2{*this, "OptionPWM2", 4};
    platform::CommandButton btnPWMmode{*this, "btnPWMmode"};
    platform::Frame FrameIdleValve{*this, "FrameIdleValve"};
    platform::TextBox txtIdleValveSetpoint{*this, "txtIdleValveSetpoint"};
    platform::TextBox txtIdleValveMin{*this, "txtIdleValveMin"};
    platform::TextBox txtIdleValveMax{*this, "txtIdleValveMax"};
    platform::CommandButton btnSaveIdleValve{*this, "btnSaveIdleValve"};
    platform::Frame FrameBoost{*this, "FrameBoost"};
    platform::ControlArray<platform::TextBox> txtBoostTav{*this, "txtBoostTav", 16};  // 1000 to 8500 rpm
    platform::CommandButton btnSaveBoost{*this, "btnSaveBoost"};

    // 4 "Lambda"
    platform::Frame FrameLambdaType{*this, "FrameLambdaType"};
    platform::ControlArray<platform::OptionButton> optLambdaType{*this, "optLambdaType", 2};
    platform::CommandButton btnSaveLambdaType{*this, "btnSaveLambdaType"};
    platform::Frame FrameLambda{*this, "FrameLambda"};
    platform::ControlArray<platform::TextBox> txtLambdaTav{*this, "txtLambdaTav", 10};
    platform::ControlArray<platform::TextBox> txtLambdaVaik{*this, "txtLambdaVaik", 10};
    platform::CommandButton btnSaveLambda{*this, "btnSaveLambda"};
    platform::Frame FrameIdlemap{*this, "FrameIdlemap"};
    platform::ControlArray<platform::TextBox> txtInjIdleMap{*this, "txtInjIdleMap", 16};  // 500 to 2000 rpm
    platform::CommandButton btnSaveIdlemap{*this, "btnSaveIdlemap"};

    // 5 "Misc"
    platform::Frame FrameMapSensor{*this, "FrameMapSensor"};
    platform::ComboBox ComboMapSensorType{*this, "ComboMapSensorType"};
    platform::Frame FrameNTC{*this, "FrameNTC"};
    platform::TextBox txtNTC1{*this, "txtNTC1"};
    platform::TextBox txtNTC2{*this, "txtNTC2"};
    platform::TextBox txtNTC3{*this, "txtNTC3"};
    platform::TextBox txtNTC4{*this, "txtNTC4"};
    platform::TextBox txtNTCMultiplier{*this, "txtNTCMultiplier"};
    platform::CommandButton btnSaveNTCCal{*this, "btnSaveNTCCal"};
    platform::Frame FrameLoadCalc{*this, "FrameLoadCalc"};
    platform::TextBox txtLoadOffset{*this, "txtLoadOffset"};
    platform::TextBox txtLoadGain{*this, "txtLoadGain"};
    platform::ControlArray<platform::OptionButton> optLoadMode{*this, "optLoadMode", 2};
    platform::CommandButton btnLoadCalc{*this, "btnLoadCalc"};
    platform::Frame FrameThrottle{*this, "FrameThrottle"};
    platform::CommandButton btn0thr{*this, "btn0thr"};
    platform::CommandButton btn100thr{*this, "btn100thr"};
    platform::Label lblMINTHR{*this, "lblMINTHR"};
    platform::Label lblMAXTHR{*this, "lblMAXTHR"};

    // 6 "Misc2"
    platform::Frame FrameFlags{*this, "FrameFlags"};
    platform::ControlArray<platform::CheckBox> chkMisc2{*this, "chkMisc2", 8};
    platform::CommandButton btnSaveMisc3{*this, "btnSaveMisc3"};

    // 7 "Warnings"
    platform::Frame FrameWarnings{*this, "FrameWarnings"};
    platform::TextBox txtBoostIgnCut{*this, "txtBoostIgnCut"};
    platform::TextBox txtColdRPMlimit{*this, "txtColdRPMlimit"};
    platform::TextBox txtWaterWarning{*this, "txtWaterWarning"};
    platform::TextBox txtOilWarning{*this, "txtOilWarning"};
    platform::TextBox txtAirWarning{*this, "txtAirWarning"};
    platform::TextBox txtTemp4Warning{*this, "txtTemp4Warning"};
    platform::TextBox txtVolt1Warning{*this, "txtVolt1Warning"};
    platform::TextBox txtVolt2Warning{*this, "txtVolt2Warning"};
    platform::TextBox txtVolt3Warning{*this, "txtVolt3Warning"};
    platform::TextBox txtVolt4Warning{*this, "txtVolt4Warning"};
    platform::CommandButton btnSaveWarnings{*this, "btnSaveWarnings"};

    // 8 "Launch/ALS"
    platform::Frame FrameLaunch{*this, "FrameLaunch"};
    platform::TextBox txtLaunchcontrol{*this, "txtLaunchcontrol"};
    platform::ComboBox Combolaunchmode{*this, "Combolaunchmode"};
    platform::TextBox txtAccelLimiterMode{*this, "txtAccelLimiterMode"};
    platform::TextBox txtAccelLimiterValue{*this, "txtAccelLimiterValue"};
    platform::TextBox txtALS_fuel{*this, "txtALS_fuel"};              // scaled
    platform::TextBox txtALS_ign_retard{*this, "txtALS_ign_retard"};  // scaled
    platform::TextBox txtlaunchdelay{*this, "txtlaunchdelay"};
    platform::TextBox txtflatshiftstartdelay{*this, "txtflatshiftstartdelay"};
    platform::TextBox txtflatshiftstopdelay{*this, "txtflatshiftstopdelay"};
    platform::CommandButton btnSaveALSsettings{*this, "btnSaveALSsettings"};
    platform::CommandButton btnLaunchHelp{*this, "btnLaunchHelp"};

    // 9 "Settings"
    platform::Frame FrameParams{*this, "FrameParams"};  // "Params"
    platform::ComboBox Combo1{*this, "Combo1"};
    platform::TextBox txtParName{*this, "txtParName"};
    platform::TextBox txtParDesc{*this, "txtParDesc"};
    platform::TextBox txtParOffset{*this, "txtParOffset"};
    platform::TextBox txtParScale{*this, "txtParScale"};
    platform::TextBox txtParWarning{*this, "txtParWarning"};
    platform::CommandButton btnSaveParam{*this, "btnSaveParam"};
    platform::Frame FrameMisc2{*this, "FrameMisc2"};  // the raw tools
    platform::TextBox TextOs{*this, "TextOs"};
    platform::TextBox TextArvo{*this, "TextArvo"};
    platform::CommandButton Command1{*this, "Command1"};
    platform::CommandButton Command2{*this, "Command2"};
    platform::CommandButton btnEEread16bit{*this, "btnEEread16bit"};
    platform::CommandButton btnWriteEE16bit{*this, "btnWriteEE16bit"};
    platform::Frame Frame13{*this, "Frame13"};  // "Inj offset type"
    platform::ControlArray<platform::OptionButton> opt_injofftype{*this, "opt_injofftype", 2};
    platform::CommandButton Command3{*this, "Command3"};
    platform::ListView ListView1{*this, "ListView1"};
};

}  // namespace korvane::settings
