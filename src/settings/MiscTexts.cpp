#include "settings/MiscTexts.h"

#include <initializer_list>

#include "settings/SavePlans.h"

namespace korvane::settings {

namespace {

using C = MiscControls;

template <class Kind>
struct TextOf {
    Kind MiscControls::*control;
    const char* caption;
};

constexpr TextOf<controls::Frame> kFrames[] = {
    {&C::FrameIdleAdv, "Idle Ignition"},
    {&C::FrameIgnEdge, "Ignition sensor type"},
    {&C::FrameChargeTime, "Ignition Charge time"},
    {&C::FrameMotorbrake, "Motorbrake"},
    {&C::FrameInjMode, "Injection mode"},
    {&C::FrameInj8ms, "Current Inj max time"},
    {&C::FrameInjAdv, "Injection advance"},
    {&C::FrameStartHelp, "Start help"},
    {&C::FrameVolt, "Voltage correction factor   ms/V"},
    {&C::FrameAccel, "Acceleration pump"},
    {&C::FramePWM1, "PWM1"},
    {&C::FramePWM2, "PWM2"},
    {&C::FrameIdleValve, "Idle valve control (PWM)"},
    {&C::FrameBoost, "Boost regulation"},
    {&C::FrameLambdaType, "Lambda type"},
    {&C::FrameLambda, "Lambda correction"},
    {&C::FrameIdlemap, "Idle Fuel correction"},
    {&C::FrameMapSensor, "Map sensor type"},
    {&C::FrameNTC, "Temperature sensor calibration"},
    {&C::FrameLoadCalc, "Load calculation"},
    {&C::FrameThrottle, "Throttle calibration"},
    {&C::FrameFlags, "Misc2"},
    {&C::FrameWarnings, "Warnings"},
    {&C::FrameLaunch, "Launch / Antilag settings"},
    {&C::FrameParams, "Params"},
    {&C::FrameMisc2, "Älä käytä!"},
    {&C::Frame13, "Inj offset type"},
};

constexpr TextOf<controls::CommandButton> kButtons[] = {
    {&C::btnLoad, "Hae arvot"},
    {&C::btnReadFromFile, "load from FILE"},
    {&C::btn0thr, "Save 0% Throttle"},
    {&C::btn100thr, "Save full Throttle"},
    {&C::btnLaunchHelp, "Help"},
    {&C::btnSaveParam, "Save Param"},
    {&C::Command1, "EE Write"},
    {&C::Command2, "EE Read"},
    {&C::btnEEread16bit, "EE Read 16bit"},
    {&C::btnWriteEE16bit, "EE Write 16bit"},
    {&C::Command3, "Save program settings"},
};

template <class Kind>
void name(controls::ControlArray<Kind>& controls, std::initializer_list<const char*> captions) {
    int index = 0;
    for (const char* caption : captions) {
        controls(index++).Caption = caption;
    }
}

void nameSingles(MiscControls& window) {
    window.Caption = "Misc";
    for (const auto& [frame, caption] : kFrames) {
        (window.*frame).Caption = caption;
    }
    for (const auto& [button, caption] : kButtons) {
        (window.*button).Caption = caption;
    }
    for (const SaveButton& each : saveButtons()) {
        (window.*each.button).Caption = "Save";
    }
}

void nameRows(MiscControls& window) {
    name(window.optInj8ms, {"3.5ms", "7ms", "10.5ms", "14ms"});
    name(window.OptionPWM1, {"Idle valve", "extra INJECTION", "Shift Light", "not used"});
    name(window.OptionPWM2, {"Boost valve", "extra INJECTION", "VTC (rpm,map)", "not used"});
    name(window.optLambdaType, {"WideBand (0-5v)", "NarrowBand (0-1v)"});
    name(window.optLoadMode, {"MAP", "Throttle"});
    name(window.chkMisc2,
         {"RpmLimit cuts IGN not FUEL", "Multispark", "Use Idle Map", "Antilag", "Intake Air Temp Correction",
          "Intake Air Temp Correction 50%", "Idle Lambda correction ", "---"});
    name(window.opt_injofftype, {"Inj offset", "Inj opening offset"});
}

void fillLists(MiscControls& window) {
    for (const char* tab : {"Ignition", "Injection", "PWM, Boost, idle", "Lambda", "Misc", "Misc2", "Warnings",
                            "Launch/ALS", "Settings"}) {
        window.tbsOptions.addTab(tab);
    }
    for (const char* row : {"MPX4250", "Bosch 3bar, VW,audi", "Vacuum"}) {
        window.ComboMapSensorType.AddItem(row);
    }
    for (const char* row :
         {"Launch -no delay", "Launch with delay (analog input)", "Launch with delay (fixed, stored)",
          "Accel limit (time analog input)", "Accel limit (time fixed, stored)", "Accel limit (all time)"}) {
        window.Combolaunchmode.AddItem(row);
    }
}

void setToolTips(MiscControls& window) {
    window.OptionPWM2(2).ToolTipText = "Valve Timing Control";
    window.btn0thr.ToolTipText = "Nosta kaasu kokonaan pois ja paina tätä nappia.";
    window.btn100thr.ToolTipText = "Paina kaasu pohjaan ja paina tätä nappia.";
    window.chkMisc2(3).ToolTipText = "sytys myöhästetty";
    window.chkMisc2(4).ToolTipText = "Teoreettisesti laskettu";
    window.chkMisc2(5).ToolTipText = "IAT correction /2";
}

// Controls that show or offer nothing at first.
void restrain(MiscControls& window) {
    for (auto& shown : window.optInj8ms) {
        shown.Enabled = false;
    }
    window.FrameMisc2.Visible = false;
    window.ListView1.Visible = false;
}

}  // namespace

void describeControls(MiscControls& window) {
    nameSingles(window);
    nameRows(window);
    fillLists(window);
    setToolTips(window);
    restrain(window);
}

}  // namespace korvane::settings
