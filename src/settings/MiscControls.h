// The controls of the settings window under their own names, page by page.
#pragma once

#include <cstdint>

#include "controls/Controls.h"
#include "controls/ListView.h"
#include "controls/PictureBox.h"
#include "controls/Timer.h"
#include "controls/Window.h"

namespace korvane::settings {

inline constexpr int kPages = 9;

// Holds no logic; each frame is one group of settings with its own save button.
class MiscControls : public controls::Window {
public:
    explicit MiscControls(platform::Machine& machine);

    controls::TabStrip tbsOptions{*this, "tbsOptions"};
    controls::ControlArray<controls::PictureBox> picOptions{*this, "picOptions", kPages};  // the page of tab i + 1
    controls::CommandButton btnLoad{*this, "btnLoad"};
    controls::CommandButton btnReadFromFile{*this, "btnReadFromFile"};
    controls::ProgressBar prgLoad{*this, "prgLoad"};  // of a full read
    controls::Timer TimeOutTimer{*this, "TimeOutTimer", true, 1000};
    controls::Timer TimerInitialGetData{*this, "TimerInitialGetData", false, 100};

    std::int16_t TimeOutCount = 0;  // ticks of TimeOutTimer; nothing reads it
    std::int32_t LambdaType = 0;    // WBO2_MODE_OFF as last received

    // 1 "Ignition"
    controls::Frame FrameIdleAdv{*this, "FrameIdleAdv"};
    controls::ControlArray<controls::TextBox> txtIdleAdv{*this, "txtIdleAdv", 5};  // 500 to 900 rpm
    controls::CommandButton btnSaveIdleAdv{*this, "btnSaveIdleAdv"};
    controls::Frame FrameIgnEdge{*this, "FrameIgnEdge"};
    controls::TextBox txtIgnEdge{*this, "txtIgnEdge"};
    controls::CommandButton btnIgnEdge{*this, "btnIgnEdge"};
    controls::Frame FrameChargeTime{*this, "FrameChargeTime"};
    controls::TextBox txtchargetime{*this, "txtchargetime"};  // scaled
    controls::CommandButton btnSaveChargeTime{*this, "btnSaveChargeTime"};
    controls::Frame FrameMotorbrake{*this, "FrameMotorbrake"};
    controls::TextBox txtMotorBrakeLow{*this, "txtMotorBrakeLow"};
    controls::TextBox txtMotorBrakeHigh{*this, "txtMotorBrakeHigh"};
    controls::CommandButton btnSaveMotorbrake{*this, "btnSaveMotorbrake"};

    // 2 "Injection"
    controls::Frame FrameInjMode{*this, "FrameInjMode"};
    controls::TextBox txtInjMode{*this, "txtInjMode"};
    controls::TextBox txtInjMultiplier{*this, "txtInjMultiplier"};
    controls::CommandButton btnInjMode{*this, "btnInjMode"};
    controls::Frame FrameInj8ms{*this, "FrameInj8ms"};
    controls::ControlArray<controls::OptionButton> optInj8ms{*this, "optInj8ms", 4};  // shown only
    controls::Frame FrameInjAdv{*this, "FrameInjAdv"};
    controls::ControlArray<controls::TextBox> txtInjAdv{*this, "txtInjAdv", 16};  // 1000 to 8500 rpm
    controls::CommandButton btnSaveInjAdv{*this, "btnSaveInjAdv"};
    controls::Frame FrameStartHelp{*this, "FrameStartHelp"};
    controls::TextBox txtStart{*this, "txtStart"};  // scaled
    controls::TextBox txtStartHelpLen{*this, "txtStartHelpLen"};
    controls::TextBox txtRyyppy{*this, "txtRyyppy"};  // scaled
    controls::TextBox txtChokeEnd{*this, "txtChokeEnd"};
    controls::CommandButton btnStartHelp{*this, "btnStartHelp"};
    controls::Frame FrameVolt{*this, "FrameVolt"};
    controls::ControlArray<controls::TextBox> txtVolt{*this, "txtVolt", 4};  // scaled
    controls::CommandButton btnSaveVolt{*this, "btnSaveVolt"};
    controls::Frame FrameAccel{*this, "FrameAccel"};
    controls::ControlArray<controls::TextBox> txtAccel{*this, "txtAccel", 10};  // scaled without a Tag
    controls::TextBox txtAccelDelay{*this, "txtAccelDelay"};
    controls::CommandButton btnAccel{*this, "btnAccel"};

    // 3 "PWM, Boost, idle"
    controls::Frame FramePWM1{*this, "FramePWM1"};
    controls::Frame FramePWM2{*this, "FramePWM2"};
    controls::ControlArray<controls::OptionButton> OptionPWM1{*this, "OptionPWM1", 4};
    controls::ControlArray<controls::OptionButton> OptionPWM2{*this, "OptionPWM2", 4};
    controls::CommandButton btnPWMmode{*this, "btnPWMmode"};
    controls::Frame FrameIdleValve{*this, "FrameIdleValve"};
    controls::TextBox txtIdleValveSetpoint{*this, "txtIdleValveSetpoint"};
    controls::TextBox txtIdleValveMin{*this, "txtIdleValveMin"};
    controls::TextBox txtIdleValveMax{*this, "txtIdleValveMax"};
    controls::CommandButton btnSaveIdleValve{*this, "btnSaveIdleValve"};
    controls::Frame FrameBoost{*this, "FrameBoost"};
    controls::ControlArray<controls::TextBox> txtBoostTav{*this, "txtBoostTav", 16};  // 1000 to 8500 rpm
    controls::CommandButton btnSaveBoost{*this, "btnSaveBoost"};

    // 4 "Lambda"
    controls::Frame FrameLambdaType{*this, "FrameLambdaType"};
    controls::ControlArray<controls::OptionButton> optLambdaType{*this, "optLambdaType", 2};
    controls::CommandButton btnSaveLambdaType{*this, "btnSaveLambdaType"};
    controls::Frame FrameLambda{*this, "FrameLambda"};
    controls::ControlArray<controls::TextBox> txtLambdaTav{*this, "txtLambdaTav", 10};
    controls::ControlArray<controls::TextBox> txtLambdaVaik{*this, "txtLambdaVaik", 10};
    controls::CommandButton btnSaveLambda{*this, "btnSaveLambda"};
    controls::Frame FrameIdlemap{*this, "FrameIdlemap"};
    controls::ControlArray<controls::TextBox> txtInjIdleMap{*this, "txtInjIdleMap", 16};  // 500 to 2000 rpm
    controls::CommandButton btnSaveIdlemap{*this, "btnSaveIdlemap"};

    // 5 "Misc"
    controls::Frame FrameMapSensor{*this, "FrameMapSensor"};
    controls::ComboBox ComboMapSensorType{*this, "ComboMapSensorType"};
    controls::Frame FrameNTC{*this, "FrameNTC"};
    controls::TextBox txtNTC1{*this, "txtNTC1"};
    controls::TextBox txtNTC2{*this, "txtNTC2"};
    controls::TextBox txtNTC3{*this, "txtNTC3"};
    controls::TextBox txtNTC4{*this, "txtNTC4"};
    controls::TextBox txtNTCMultiplier{*this, "txtNTCMultiplier"};
    controls::CommandButton btnSaveNTCCal{*this, "btnSaveNTCCal"};
    controls::Frame FrameLoadCalc{*this, "FrameLoadCalc"};
    controls::TextBox txtLoadOffset{*this, "txtLoadOffset"};
    controls::TextBox txtLoadGain{*this, "txtLoadGain"};
    controls::ControlArray<controls::OptionButton> optLoadMode{*this, "optLoadMode", 2};
    controls::CommandButton btnLoadCalc{*this, "btnLoadCalc"};
    controls::Frame FrameThrottle{*this, "FrameThrottle"};
    controls::CommandButton btn0thr{*this, "btn0thr"};
    controls::CommandButton btn100thr{*this, "btn100thr"};
    controls::Label lblMINTHR{*this, "lblMINTHR"};
    controls::Label lblMAXTHR{*this, "lblMAXTHR"};

    // 6 "Misc2"
    controls::Frame FrameFlags{*this, "FrameFlags"};
    controls::ControlArray<controls::CheckBox> chkMisc2{*this, "chkMisc2", 8};
    controls::CommandButton btnSaveMisc3{*this, "btnSaveMisc3"};

    // 7 "Warnings"
    controls::Frame FrameWarnings{*this, "FrameWarnings"};
    controls::TextBox txtBoostIgnCut{*this, "txtBoostIgnCut"};
    controls::TextBox txtColdRPMlimit{*this, "txtColdRPMlimit"};
    controls::TextBox txtWaterWarning{*this, "txtWaterWarning"};
    controls::TextBox txtOilWarning{*this, "txtOilWarning"};
    controls::TextBox txtAirWarning{*this, "txtAirWarning"};
    controls::TextBox txtTemp4Warning{*this, "txtTemp4Warning"};
    controls::TextBox txtVolt1Warning{*this, "txtVolt1Warning"};
    controls::TextBox txtVolt2Warning{*this, "txtVolt2Warning"};
    controls::TextBox txtVolt3Warning{*this, "txtVolt3Warning"};
    controls::TextBox txtVolt4Warning{*this, "txtVolt4Warning"};
    controls::CommandButton btnSaveWarnings{*this, "btnSaveWarnings"};

    // 8 "Launch/ALS"
    controls::Frame FrameLaunch{*this, "FrameLaunch"};
    controls::TextBox txtLaunchcontrol{*this, "txtLaunchcontrol"};
    controls::ComboBox Combolaunchmode{*this, "Combolaunchmode"};
    controls::TextBox txtAccelLimiterMode{*this, "txtAccelLimiterMode"};
    controls::TextBox txtAccelLimiterValue{*this, "txtAccelLimiterValue"};
    controls::TextBox txtALS_fuel{*this, "txtALS_fuel"};              // scaled
    controls::TextBox txtALS_ign_retard{*this, "txtALS_ign_retard"};  // scaled
    controls::TextBox txtlaunchdelay{*this, "txtlaunchdelay"};
    controls::TextBox txtflatshiftstartdelay{*this, "txtflatshiftstartdelay"};
    controls::TextBox txtflatshiftstopdelay{*this, "txtflatshiftstopdelay"};
    controls::CommandButton btnSaveALSsettings{*this, "btnSaveALSsettings"};
    controls::CommandButton btnLaunchHelp{*this, "btnLaunchHelp"};

    // 9 "Settings"
    controls::Frame FrameParams{*this, "FrameParams"};  // "Params"
    controls::ComboBox Combo1{*this, "Combo1"};
    controls::TextBox txtParName{*this, "txtParName"};
    controls::TextBox txtParDesc{*this, "txtParDesc"};
    controls::TextBox txtParOffset{*this, "txtParOffset"};
    controls::TextBox txtParScale{*this, "txtParScale"};
    controls::TextBox txtParWarning{*this, "txtParWarning"};
    controls::CommandButton btnSaveParam{*this, "btnSaveParam"};
    controls::Frame FrameMisc2{*this, "FrameMisc2"};  // the raw tools
    controls::TextBox TextOs{*this, "TextOs"};
    controls::TextBox TextArvo{*this, "TextArvo"};
    controls::CommandButton Command1{*this, "Command1"};
    controls::CommandButton Command2{*this, "Command2"};
    controls::CommandButton btnEEread16bit{*this, "btnEEread16bit"};
    controls::CommandButton btnWriteEE16bit{*this, "btnWriteEE16bit"};
    controls::Frame Frame13{*this, "Frame13"};  // "Inj offset type"
    controls::ControlArray<controls::OptionButton> opt_injofftype{*this, "opt_injofftype", 2};
    controls::CommandButton Command3{*this, "Command3"};
    controls::ListView ListView1{*this, "ListView1"};
};

}  // namespace korvane::settings
