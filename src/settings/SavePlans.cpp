#include "settings/SavePlans.h"

#include <array>

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using C = MiscControls;
using fields::Pause;
using fields::SaveStep;

// The pauses (ms) are fixed for each group; they follow no common rule.
constexpr Pause kAfter50{50};
constexpr Pause kAfter100{100};
constexpr Pause kAfter200{200};

constexpr std::array kIdleAdv{SaveStep{&A::IDLE_ADV0, Pause{50, 2}}};
constexpr std::array kIgnEdge{SaveStep{&A::IGN_EDGE_OFFSET}};
constexpr std::array kChargeTime{SaveStep{&A::CHARGE_TIME_OFF}};
constexpr std::array kMotorbrake{
    SaveStep{&A::MOTORBRAKE_LOW, kAfter50},
    SaveStep{&A::MOTORBRAKE_HIGH},
};
constexpr std::array kInjMode{
    SaveStep{&A::INJ_MODE_OFFSET},
    SaveStep{&A::INJ_MULTIPLIER_OFF},
};
constexpr std::array kInjAdv{SaveStep{&A::INJADV_OFF0, Pause{50, 2, false}}};
constexpr std::array kStartHelp{
    SaveStep{&A::START_HELP_OFF},
    SaveStep{&A::STARTHELP_LEN_OFF_8},
    SaveStep{&A::RYYPPY_OFF},
    SaveStep{&A::RYYPPY_END},
};
constexpr std::array kVolt{SaveStep{&A::VOLT_OFF, Pause{50, 1, false}}};
constexpr std::array kAccel{
    SaveStep{&A::ACCEL_OFF, kAfter50},
    SaveStep{&A::ACCEL_DELAY_OFF},
};
constexpr std::array kFlags{SaveStep{&A::MISC2_OFF}};
constexpr std::array kIdleValve{
    SaveStep{&A::IDLEPID_MAX, kAfter50},
    SaveStep{&A::IDLEPID_MIN, kAfter50},
    SaveStep{&A::IDLEPID_SETPOINT_LO},
};
constexpr std::array kPwmMode{SaveStep{&A::PWM_MODE}};
constexpr std::array kBoost{SaveStep{&A::BOOSTPID_SETPOINT, kAfter50}};
constexpr std::array kLambdaType{SaveStep{&A::WBO2_MODE_OFF}};
constexpr std::array kLambda{
    SaveStep{&A::LAMBDATAV_OFF, kAfter50},
    SaveStep{&A::LAMBDAVAIK_OFF, kAfter50},
};
constexpr std::array kIdlemap{SaveStep{&A::IDLEMAP_OFF, kAfter100}};
constexpr std::array kSensors{
    SaveStep{&A::NTC1_OFF}, SaveStep{&A::NTC2_OFF, kAfter100}, SaveStep{&A::NTC3_OFF},
    SaveStep{&A::NTC4_OFF}, SaveStep{&A::NTC_MULTIPLIER_OFF},
};
constexpr std::array kLoadCalc{
    SaveStep{&A::MAPOFFSET_OFF, kAfter200},
    SaveStep{&A::MAPGAIN_OFF, kAfter200},
    SaveStep{&A::LOAD_MODE},
};
constexpr std::array kWarnings{
    SaveStep{&A::BOOST_IGNCUT_OFF},  SaveStep{&A::RPMLIMIT_COLD_LOW_OFF}, SaveStep{&A::WATER_WARNING_OFF},
    SaveStep{&A::OIL_WARNING_OFF},   SaveStep{&A::AIR_WARNING_OFF},       SaveStep{&A::TEMP4_WARNING_OFF},
    SaveStep{&A::VOLT1_WARNING_OFF}, SaveStep{&A::VOLT2_WARNING_OFF},     SaveStep{&A::VOLT3_WARNING_OFF},
    SaveStep{&A::VOLT4_WARNING_OFF},
};
constexpr std::array kLaunch{
    SaveStep{&A::LAUNCHCONTROL_LO},
    SaveStep{&A::LAUNCH_MODE_OFF},
    SaveStep{&A::ACCEL_LIMITER_VALUE_OFF},
    SaveStep{&A::ACCEL_LIMITER_MODE_OFF, kAfter50},
    SaveStep{&A::ALS_FUEL_OFF},
    SaveStep{&A::ALS_ADV_OFF, kAfter50},
    SaveStep{&A::LAUNCH_DELAY_OFF},
    SaveStep{&A::FLATSHIFT_STARTDELAY_OFF},
    SaveStep{&A::FLATSHIFT_STOPDELAY_OFF},
};

constexpr std::array kButtons{
    SaveButton{&C::btnSaveIdleAdv, {kIdleAdv}},       SaveButton{&C::btnIgnEdge, {kIgnEdge}},
    SaveButton{&C::btnSaveChargeTime, {kChargeTime}}, SaveButton{&C::btnSaveMotorbrake, {kMotorbrake, true}},
    SaveButton{&C::btnInjMode, {kInjMode}},           SaveButton{&C::btnSaveInjAdv, {kInjAdv}},
    SaveButton{&C::btnStartHelp, {kStartHelp}},       SaveButton{&C::btnSaveVolt, {kVolt}},
    SaveButton{&C::btnAccel, {kAccel, true}},         SaveButton{&C::btnSaveMisc3, {kFlags}},
    SaveButton{&C::btnSaveIdleValve, {kIdleValve}},   SaveButton{&C::btnPWMmode, {kPwmMode}},
    SaveButton{&C::btnSaveBoost, {kBoost, true}},     SaveButton{&C::btnSaveLambdaType, {kLambdaType}},
    SaveButton{&C::btnSaveLambda, {kLambda, true}},   SaveButton{&C::btnSaveIdlemap, {kIdlemap}},
    SaveButton{&C::btnSaveNTCCal, {kSensors}},        SaveButton{&C::btnLoadCalc, {kLoadCalc}},
    SaveButton{&C::btnSaveWarnings, {kWarnings}},     SaveButton{&C::btnSaveALSsettings, {kLaunch}},
};

}  // namespace

std::span<const SaveButton> saveButtons() {
    return kButtons;
}

}  // namespace korvane::settings
