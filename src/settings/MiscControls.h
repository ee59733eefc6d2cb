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

    platform::TabStrip tbsOptions;
    platform::ControlArray<platform::PictureBox> picOptions;  // the page of tab i + 1
    platform::CommandButton btnLoad, btnReadFromFile;
    platform::ProgressBar prgLoad;  // of a full read
    platform::Timer TimeOutTimer, TimerInitialGetData;

    std::int16_t TimeOutCount = 0;  // ticks of TimeOutTimer; nothing reads it
    std::int32_t LambdaType = 0;    // WBO2_MODE_OFF as last received

    // 1 "Ignition"
    platform::Frame FrameIdleAdv;
    platform::ControlArray<platform::TextBox> txtIdleAdv;  // 5: 500 to 900 rpm
    platform::CommandButton btnSaveIdleAdv;
    platform::Frame FrameIgnEdge;
    platform::TextBox txtIgnEdge;
    platform::CommandButton btnIgnEdge;
    platform::Frame FrameChargeTime;
    platform::TextBox txtchargetime;  // scaled
    platform::CommandButton btnSaveChargeTime;
    platform::Frame FrameMotorbrake;
    platform::TextBox txtMotorBrakeLow, txtMotorBrakeHigh;
    platform::CommandButton btnSaveMotorbrake;

    // 2 "Injection"
    platform::Frame FrameInjMode;
    platform::TextBox txtInjMode, txtInjMultiplier;
    platform::CommandButton btnInjMode;
    platform::Frame FrameInj8ms;
    platform::ControlArray<platform::OptionButton> optInj8ms;  // 4, shown only
    platform::Frame FrameInjAdv;
    platform::ControlArray<platform::TextBox> txtInjAdv;  // 16: 1000 to 8500 rpm
    platform::CommandButton btnSaveInjAdv;
    platform::Frame FrameStartHelp;
    platform::TextBox txtStart, txtStartHelpLen, txtRyyppy, txtChokeEnd;  // txtStart and txtRyyppy are scaled
    platform::CommandButton btnStartHelp;
    platform::Frame FrameVolt;
    platform::ControlArray<platform::TextBox> txtVolt;  // 4, scaled
    platform::CommandButton btnSaveVolt;
    platform::Frame FrameAccel;
    platform::ControlArray<platform::TextBox> txtAccel;  // 10, scaled without a Tag
    platform::TextBox txtAccelDelay;
    platform::CommandButton btnAccel;

    // 3 "PWM, Boost, idle"
    platform::Frame FramePWM1, FramePWM2;
    platform::ControlArray<platform::OptionButton> OptionPWM1, OptionPWM2;  // 4 each
    platform::CommandButton btnPWMmode;
    platform::Frame FrameIdleValve;
    platform::TextBox txtIdleValveSetpoint, txtIdleValveMin, txtIdleValveMax;
    platform::CommandButton btnSaveIdleValve;
    platform::Frame FrameBoost;
    platform::ControlArray<platform::TextBox> txtBoostTav;  // 16: 1000 to 8500 rpm
    platform::CommandButton btnSaveBoost;

    // 4 "Lambda"
    platform::Frame FrameLambdaType;
    platform::ControlArray<platform::OptionButton> optLambdaType;  // 2
    platform::CommandButton btnSaveLambdaType;
    platform::Frame FrameLambda;
    platform::ControlArray<platform::TextBox> txtLambdaTav, txtLambdaVaik;  // 10 each
    platform::CommandButton btnSaveLambda;
    platform::Frame FrameIdlemap;
    platform::ControlArray<platform::TextBox> txtInjIdleMap;  // 16: 500 to 2000 rpm
    platform::CommandButton btnSaveIdlemap;

    // 5 "Misc"
    platform::Frame FrameMapSensor;
    platform::ComboBox ComboMapSensorType;
    platform::Frame FrameNTC;
    platform::TextBox txtNTC1, txtNTC2, txtNTC3, txtNTC4, txtNTCMultiplier;
    platform::CommandButton btnSaveNTCCal;
    platform::Frame FrameLoadCalc;
    platform::TextBox txtLoadOffset, txtLoadGain;
    platform::ControlArray<platform::OptionButton> optLoadMode;  // 2
    platform::CommandButton btnLoadCalc;
    platform::Frame FrameThrottle;
    platform::CommandButton btn0thr, btn100thr;
    platform::Label lblMINTHR, lblMAXTHR;

    // 6 "Misc2"
    platform::Frame FrameFlags;
    platform::ControlArray<platform::CheckBox> chkMisc2;  // 8 bits
    platform::CommandButton btnSaveMisc3;

    // 7 "Warnings"
    platform::Frame FrameWarnings;
    platform::TextBox txtBoostIgnCut, txtColdRPMlimit, txtWaterWarning, txtOilWarning, txtAirWarning, txtTemp4Warning;
    platform::TextBox txtVolt1Warning, txtVolt2Warning, txtVolt3Warning, txtVolt4Warning;
    platform::CommandButton btnSaveWarnings;

    // 8 "Launch/ALS"
    platform::Frame FrameLaunch;
    platform::TextBox txtLaunchcontrol;
    platform::ComboBox Combolaunchmode;
    platform::TextBox txtAccelLimiterMode, txtAccelLimiterValue;
    platform::TextBox txtALS_fuel, txtALS_ign_retard;  // scaled
    platform::TextBox txtlaunchdelay, txtflatshiftstartdelay, txtflatshiftstopdelay;
    platform::CommandButton btnSaveALSsettings, btnLaunchHelp;

    // 9 "Settings"
    platform::Frame FrameParams;  // "Params"
    platform::ComboBox Combo1;
    platform::TextBox txtParName, txtParDesc, txtParOffset, txtParScale, txtParWarning;
    platform::CommandButton btnSaveParam;
    platform::Frame FrameMisc2;  // the raw tools
    platform::TextBox TextOs, TextArvo;
    platform::CommandButton Command1, Command2, btnEEread16bit, btnWriteEE16bit;
    platform::Frame Frame13;                                        // "Inj offset type"
    platform::ControlArray<platform::OptionButton> opt_injofftype;  // 2
    platform::CommandButton Command3;
    platform::ListView ListView1;
};

}  // namespace korvane::settings
