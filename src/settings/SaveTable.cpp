#include "settings/SaveTable.h"

#include <array>

#include "core/Checked.h"
#include "core/Numbers.h"

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using C = MiscControls;
using core::SharedTables;

constexpr Pause kAfter50{50};
constexpr Pause kAfter100{100};
constexpr Pause kAfter200{200};

std::uint8_t ignitionEdge(MiscControls& window, const SharedTables&) {
    return core::val(window.txtIgnEdge.Text.get()) == 1 ? 1 : 0;
}

std::uint8_t injectionMode(MiscControls& window, const SharedTables&) {
    const double mode = core::val(window.txtInjMode.Text.get());
    return mode == 1 ? 1 : mode == 4 ? 4 : 2;
}

std::uint8_t flags(MiscControls& window, const SharedTables& tables) {
    int byte = 0;
    for (int bit = 0; bit < window.chkMisc2.count(); ++bit) {
        if (window.chkMisc2(bit).Value == 1) {
            byte |= core::checked(tables.BitMask, bit);
        }
    }
    return core::toByte(byte);
}

std::uint8_t pwmMode(MiscControls& window, const SharedTables& tables) {
    int byte = 0;
    int bit = 0;
    for (auto* options : {&window.OptionPWM1, &window.OptionPWM2}) {
        for (auto& option : *options) {
            if (option.Value) {
                byte |= core::checked(tables.BitMask, bit);
            }
            ++bit;
        }
    }
    return core::toByte(byte);
}

std::uint8_t lambdaType(MiscControls& window, const SharedTables&) {
    return window.optLambdaType(0).Value ? 1 : 0;
}

std::uint8_t loadMode(MiscControls& window, const SharedTables&) {
    return window.optLoadMode(0).Value ? 0 : 1;
}

constexpr std::array kIdleAdv{SaveRow{&A::IDLE_ADV0, &C::txtIdleAdv, Taken::Byte, Pause{50, 2}}};
constexpr std::array kIgnEdge{SaveRow{&A::IGN_EDGE_OFFSET, &ignitionEdge}};
constexpr std::array kChargeTime{SaveRow{&A::CHARGE_TIME_OFF, &C::txtchargetime, Taken::Tag}};
constexpr std::array kMotorbrake{
    SaveRow{&A::MOTORBRAKE_LOW, &C::txtMotorBrakeLow, Taken::TwoBytes, kAfter50},
    SaveRow{&A::MOTORBRAKE_HIGH, &C::txtMotorBrakeHigh, Taken::TwoBytes},
};
constexpr std::array kInjMode{
    SaveRow{&A::INJ_MODE_OFFSET, &injectionMode},
    SaveRow{&A::INJ_MULTIPLIER_OFF, &C::txtInjMultiplier},
};
constexpr std::array kInjAdv{SaveRow{&A::INJADV_OFF0, &C::txtInjAdv, Taken::Byte, Pause{50, 2, false}}};
constexpr std::array kStartHelp{
    SaveRow{&A::START_HELP_OFF, &C::txtStart, Taken::Tag},
    SaveRow{&A::STARTHELP_LEN_OFF_8, &C::txtStartHelpLen},
    SaveRow{&A::RYYPPY_OFF, &C::txtRyyppy, Taken::Tag},
    SaveRow{&A::RYYPPY_END, &C::txtChokeEnd},
};
constexpr std::array kVolt{SaveRow{&A::VOLT_OFF, &C::txtVolt, Taken::Tag, Pause{50, 1, false}}};
constexpr std::array kAccel{
    SaveRow{&A::ACCEL_OFF, &C::txtAccel, Taken::Counts, kAfter50},
    SaveRow{&A::ACCEL_DELAY_OFF, &C::txtAccelDelay},
};
constexpr std::array kFlags{SaveRow{&A::MISC2_OFF, &flags}};
constexpr std::array kIdleValve{
    SaveRow{&A::IDLEPID_MAX, &C::txtIdleValveMax, Taken::Byte, kAfter50},
    SaveRow{&A::IDLEPID_MIN, &C::txtIdleValveMin, Taken::Byte, kAfter50},
    SaveRow{&A::IDLEPID_SETPOINT_LO, &C::txtIdleValveSetpoint, Taken::TwoBytes},
};
constexpr std::array kPwmMode{SaveRow{&A::PWM_MODE, &pwmMode}};
constexpr std::array kBoost{SaveRow{&A::BOOSTPID_SETPOINT, &C::txtBoostTav, Taken::Byte, kAfter50}};
constexpr std::array kLambdaType{SaveRow{&A::WBO2_MODE_OFF, &lambdaType}};
constexpr std::array kLambda{
    SaveRow{&A::LAMBDATAV_OFF, &C::txtLambdaTav, Taken::Byte, kAfter50},
    SaveRow{&A::LAMBDAVAIK_OFF, &C::txtLambdaVaik, Taken::Byte, kAfter50},
};
constexpr std::array kIdlemap{SaveRow{&A::IDLEMAP_OFF, &C::txtInjIdleMap, Taken::Byte, kAfter100}};
constexpr std::array kSensors{
    SaveRow{&A::NTC1_OFF, &C::txtNTC1},
    SaveRow{&A::NTC2_OFF, &C::txtNTC2, Taken::Byte, kAfter100},
    SaveRow{&A::NTC3_OFF, &C::txtNTC3},
    SaveRow{&A::NTC4_OFF, &C::txtNTC4},
    SaveRow{&A::NTC_MULTIPLIER_OFF, &C::txtNTCMultiplier},
};
constexpr std::array kLoadCalc{
    SaveRow{&A::MAPOFFSET_OFF, &C::txtLoadOffset, Taken::Byte, kAfter200},
    SaveRow{&A::MAPGAIN_OFF, &C::txtLoadGain, Taken::Byte, kAfter200},
    SaveRow{&A::LOAD_MODE, &loadMode},
};
constexpr std::array kWarnings{
    SaveRow{&A::BOOST_IGNCUT_OFF, &C::txtBoostIgnCut},
    SaveRow{&A::RPMLIMIT_COLD_LOW_OFF, &C::txtColdRPMlimit, Taken::Word},
    SaveRow{&A::WATER_WARNING_OFF, &C::txtWaterWarning},
    SaveRow{&A::OIL_WARNING_OFF, &C::txtOilWarning},
    SaveRow{&A::AIR_WARNING_OFF, &C::txtAirWarning},
    SaveRow{&A::TEMP4_WARNING_OFF, &C::txtTemp4Warning},
    SaveRow{&A::VOLT1_WARNING_OFF, &C::txtVolt1Warning, Taken::Half},
    SaveRow{&A::VOLT2_WARNING_OFF, &C::txtVolt2Warning, Taken::Half},
    SaveRow{&A::VOLT3_WARNING_OFF, &C::txtVolt3Warning, Taken::Half},
    SaveRow{&A::VOLT4_WARNING_OFF, &C::txtVolt4Warning, Taken::Half},
};
constexpr std::array kLaunch{
    SaveRow{&A::LAUNCHCONTROL_LO, &C::txtLaunchcontrol, Taken::TwoBytes},
    SaveRow{&A::LAUNCH_MODE_OFF, &C::Combolaunchmode},
    SaveRow{&A::ACCEL_LIMITER_VALUE_OFF, &C::txtAccelLimiterValue},
    SaveRow{&A::ACCEL_LIMITER_MODE_OFF, &C::txtAccelLimiterMode, Taken::Byte, kAfter50},
    SaveRow{&A::ALS_FUEL_OFF, &C::txtALS_fuel, Taken::Tag},
    SaveRow{&A::ALS_ADV_OFF, &C::txtALS_ign_retard, Taken::Tag, kAfter50},
    SaveRow{&A::LAUNCH_DELAY_OFF, &C::txtlaunchdelay},
    SaveRow{&A::FLATSHIFT_STARTDELAY_OFF, &C::txtflatshiftstartdelay},
    SaveRow{&A::FLATSHIFT_STOPDELAY_OFF, &C::txtflatshiftstopdelay},
};

constexpr std::array kGroups{
    SaveGroup{&C::btnSaveIdleAdv, false, kIdleAdv},
    SaveGroup{&C::btnIgnEdge, false, kIgnEdge},
    SaveGroup{&C::btnSaveChargeTime, false, kChargeTime},
    SaveGroup{&C::btnSaveMotorbrake, true, kMotorbrake},
    SaveGroup{&C::btnInjMode, false, kInjMode},
    SaveGroup{&C::btnSaveInjAdv, false, kInjAdv},
    SaveGroup{&C::btnStartHelp, false, kStartHelp},
    SaveGroup{&C::btnSaveVolt, false, kVolt},
    SaveGroup{&C::btnAccel, true, kAccel},
    SaveGroup{&C::btnSaveMisc3, false, kFlags},
    SaveGroup{&C::btnSaveIdleValve, false, kIdleValve},
    SaveGroup{&C::btnPWMmode, false, kPwmMode},
    SaveGroup{&C::btnSaveBoost, true, kBoost},
    SaveGroup{&C::btnSaveLambdaType, false, kLambdaType},
    SaveGroup{&C::btnSaveLambda, true, kLambda},
    SaveGroup{&C::btnSaveIdlemap, false, kIdlemap},
    SaveGroup{&C::btnSaveNTCCal, false, kSensors},
    SaveGroup{&C::btnLoadCalc, false, kLoadCalc},
    SaveGroup{&C::btnSaveWarnings, false, kWarnings},
    SaveGroup{&C::btnSaveALSsettings, false, kLaunch},
};

}  // namespace

std::span<const SaveGroup> saveGroups() {
    return kGroups;
}

}  // namespace korvane::settings
