#include "settings/MiscLabels.h"

#include <string>

namespace korvane::settings {

namespace {

using C = MiscControls;
using Box = controls::TextBox MiscControls::*;
using Row = controls::ControlArray<controls::TextBox>;

struct Name {
    Box box;
    const char* text;
};

// The names of the air and the fourth temperature are exchanged on purpose: users know the boxes that way.
constexpr Name kNames[] = {
    {&C::txtIgnEdge, "Edge"},
    {&C::txtchargetime, "Latausaika 13.5 Voltilla"},
    {&C::txtMotorBrakeLow, "Motorbrake start RPM"},
    {&C::txtMotorBrakeHigh, "Stop RPM"},
    {&C::txtInjMode, "Mode (1, 2, 4)"},
    {&C::txtInjMultiplier, "Multiplier"},
    {&C::txtStart, "Start help"},
    {&C::txtStartHelpLen, "Start help length"},
    {&C::txtRyyppy, "Choke"},
    {&C::txtChokeEnd, "Choke end"},
    {&C::txtAccelDelay, "delay, engine rounds"},
    {&C::txtIdleValveSetpoint, "rpm Setpoint"},
    {&C::txtIdleValveMin, "% min"},
    {&C::txtIdleValveMax, "% max"},
    {&C::txtNTC1, "NTC1, water"},
    {&C::txtNTC2, "NTC2, air"},
    {&C::txtNTC3, "NTC3, oil"},
    {&C::txtNTC4, "NTC4"},
    {&C::txtNTCMultiplier, "Multiplier"},
    {&C::txtLoadOffset, "Offset"},
    {&C::txtLoadGain, "Gain"},
    {&C::txtBoostIgnCut, "Boost Ignition CUT"},
    {&C::txtColdRPMlimit, "cold RPM limit, active while choke is ON"},
    {&C::txtWaterWarning, "Water temperature, forced RPM-limiter (2500)"},
    {&C::txtOilWarning, "Oil temperature, forced RPM-limiter (2500)"},
    {&C::txtAirWarning, "Temperature4 Warning"},
    {&C::txtTemp4Warning, "Air temperatureWarning"},
    {&C::txtVolt1Warning, "Volt1 Warning"},
    {&C::txtVolt2Warning, "Volt2 Warning"},
    {&C::txtVolt3Warning, "Volt3 Warning"},
    {&C::txtVolt4Warning, "Volt4 Warning"},
    {&C::txtLaunchcontrol, "Launch control rpm limit"},
    {&C::txtlaunchdelay, "Launch stop delay"},
    {&C::txtflatshiftstartdelay, "Flat shift start delay"},
    {&C::txtflatshiftstopdelay, "Flat shift stop delay"},
    {&C::txtALS_fuel, "ALS, Fuel enrichment (%)"},
    {&C::txtALS_ign_retard, "ALS, ignition advance  (degrees) after TDC"},
    {&C::txtAccelLimiterMode, "Acceleration limiter mode"},
    {&C::txtAccelLimiterValue, "Acceleration limiter value"},
    {&C::txtParWarning, "Warning"},
    {&C::txtParOffset, "Offset"},
    {&C::txtParScale, "Scale"},
    {&C::TextOs, "Osote"},
    {&C::TextArvo, "arvo"},
};

void number(Row& row, const std::string& before, int first, int step, const std::string& behind) {
    for (int i = 0; i < row.count(); ++i) {
        row(i).setLabel(before + std::to_string(first + i * step) + behind);
    }
}

// Engine speeds in thousands, as their columns have them: "1.5 RPM".
void numberThousands(Row& row, int first, int step) {
    constexpr int kThousand = 1000;
    constexpr int kTenth = kThousand / 10;
    for (int i = 0; i < row.count(); ++i) {
        const int speed = first + i * step;
        row(i).setLabel(std::to_string(speed / kThousand) + '.' + std::to_string(speed % kThousand / kTenth) + " RPM");
    }
}

void labelRows(MiscControls& window) {
    number(window.txtIdleAdv, "", 500, 100, " RPM");
    numberThousands(window.txtInjAdv, 1000, 500);
    numberThousands(window.txtBoostTav, 1000, 500);
    numberThousands(window.txtInjIdleMap, 500, 100);
    number(window.txtAccel, "column ", 0, 10, "");
    number(window.txtLambdaTav, "setpoint ", 1, 1, "");
    number(window.txtLambdaVaik, "authority ", 1, 1, "");
    int cell = 0;
    for (const char* volts : {"<13.5 V", "<13 V", "<12 V", "<10 V"}) {
        window.txtVolt(cell++).setLabel(volts);
    }
}

}  // namespace

void labelControls(MiscControls& window) {
    for (const auto& [box, text] : kNames) {
        (window.*box).setLabel(text);
    }
    window.Combolaunchmode.setLabel("Mode");
    labelRows(window);
}

}  // namespace korvane::settings
