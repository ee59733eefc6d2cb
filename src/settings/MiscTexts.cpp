#include "settings/MiscTexts.h"

#include <initializer_list>

#include "settings/SavePlans.h"

namespace korvane::settings {

namespace {

template <class Kind>
void name(controls::ControlArray<Kind>& controls, std::initializer_list<const char*> captions) {
    int index = 0;
    for (const char* caption : captions) {
        controls(index++).Caption = caption;
    }
}

void describeWindow(MiscControls& window) {
    window.Caption = "Misc";
    for (const char* caption : {"Ignition", "Injection", "PWM, Boost, idle", "Lambda", "Misc", "Misc2", "Warnings",
                                "Launch/ALS", "Settings"}) {
        window.tbsOptions.addTab(caption);
    }
    window.btnLoad.Caption = "Hae arvot";
    window.btnReadFromFile.Caption = "load from FILE";
    for (const SaveButton& each : saveButtons()) {
        (window.*each.button).Caption = "Save";
    }
}

void describeIgnition(MiscControls& window) {
    window.FrameIdleAdv.Caption = "Idle Ignition";
    window.FrameIgnEdge.Caption = "Ignition sensor type";
    window.FrameChargeTime.Caption = "Ignition Charge time";
    window.FrameMotorbrake.Caption = "Motorbrake";
}

void describeInjection(MiscControls& window) {
    window.FrameInjMode.Caption = "Injection mode";
    window.FrameInj8ms.Caption = "Current Inj max time";
    name(window.optInj8ms, {"3.5ms", "7ms", "10.5ms", "14ms"});
    for (auto& shown : window.optInj8ms) {
        shown.Enabled = false;
    }
    window.FrameInjAdv.Caption = "Injection advance";
    window.FrameStartHelp.Caption = "Start help";
    window.FrameVolt.Caption = "Voltage correction factor   ms/V";
    window.FrameAccel.Caption = "Acceleration pump";
}

void describePwm(MiscControls& window) {
    window.FramePWM1.Caption = "PWM1";
    window.FramePWM2.Caption = "PWM2";
    name(window.OptionPWM1, {"Idle valve", "extra INJECTION", "Shift Light", "not used"});
    name(window.OptionPWM2, {"Boost valve", "extra INJECTION", "VTC (rpm,map)", "not used"});
    window.OptionPWM2(2).ToolTipText = "Valve Timing Control";
    window.FrameIdleValve.Caption = "Idle valve control (PWM)";
    window.FrameBoost.Caption = "Boost regulation";
}

void describeLambda(MiscControls& window) {
    window.FrameLambdaType.Caption = "Lambda type";
    name(window.optLambdaType, {"WideBand (0-5v)", "NarrowBand (0-1v)"});
    window.FrameLambda.Caption = "Lambda correction";
    window.FrameIdlemap.Caption = "Idle Fuel correction";
}

void describeMisc(MiscControls& window) {
    window.FrameMapSensor.Caption = "Map sensor type";
    for (const char* row : {"MPX4250", "Bosch 3bar, VW,audi", "Vacuum"}) {
        window.ComboMapSensorType.AddItem(row);
    }
    window.FrameNTC.Caption = "Temperature sensor calibration";
    window.FrameLoadCalc.Caption = "Load calculation";
    name(window.optLoadMode, {"MAP", "Throttle"});
    window.FrameThrottle.Caption = "Throttle calibration";
    window.btn0thr.Caption = "Save 0% Throttle";
    window.btn0thr.ToolTipText = "Nosta kaasu kokonaan pois ja paina tätä nappia.";
    window.btn100thr.Caption = "Save full Throttle";
    window.btn100thr.ToolTipText = "Paina kaasu pohjaan ja paina tätä nappia.";
}

void describeFlags(MiscControls& window) {
    window.FrameFlags.Caption = "Misc2";
    name(window.chkMisc2,
         {"RpmLimit cuts IGN not FUEL", "Multispark", "Use Idle Map", "Antilag", "Intake Air Temp Correction",
          "Intake Air Temp Correction 50%", "Idle Lambda correction ", "---"});
    window.chkMisc2(3).ToolTipText = "sytys myöhästetty";
    window.chkMisc2(4).ToolTipText = "Teoreettisesti laskettu";
    window.chkMisc2(5).ToolTipText = "IAT correction /2";
}

void describeWarningsAndLaunch(MiscControls& window) {
    window.FrameWarnings.Caption = "Warnings";
    window.FrameLaunch.Caption = "Launch / Antilag settings";
    for (const char* row :
         {"Launch -no delay", "Launch with delay (analog input)", "Launch with delay (fixed, stored)",
          "Accel limit (time analog input)", "Accel limit (time fixed, stored)", "Accel limit (all time)"}) {
        window.Combolaunchmode.AddItem(row);
    }
    window.btnLaunchHelp.Caption = "Help";
}

void describeTools(MiscControls& window) {
    window.FrameParams.Caption = "Params";
    window.btnSaveParam.Caption = "Save Param";
    window.FrameMisc2.Caption = "Älä käytä!";
    window.FrameMisc2.Visible = false;
    window.Command1.Caption = "EE Write";
    window.Command2.Caption = "EE Read";
    window.btnEEread16bit.Caption = "EE Read 16bit";
    window.btnWriteEE16bit.Caption = "EE Write 16bit";
    window.Frame13.Caption = "Inj offset type";
    name(window.opt_injofftype, {"Inj offset", "Inj opening offset"});
    window.Command3.Caption = "Save program settings";
    window.ListView1.Visible = false;
}

}  // namespace

void describeControls(MiscControls& window) {
    describeWindow(window);
    describeIgnition(window);
    describeInjection(window);
    describePwm(window);
    describeLambda(window);
    describeMisc(window);
    describeFlags(window);
    describeWarningsAndLaunch(window);
    describeTools(window);
}

}  // namespace korvane::settings
