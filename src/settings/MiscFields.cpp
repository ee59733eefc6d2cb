#include "settings/MiscFields.h"

#include "settings/OwnFields.h"

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using fields::Codec;
using fields::Field;
using fields::kByte;
using fields::kStoredOnly;
using fields::kTwoBytes;
using fields::kWord;
using fields::Stepping;
using fields::Width;

constexpr Codec kTicks{Width::Byte, &core::SharedTables::TickD, " ms"};
constexpr Codec kFiftieths{Width::Byte, 0.02};
constexpr Codec kFuelPercent{Width::Byte, 5.0};
constexpr Codec kRetardDegrees{Width::Byte, 4.5};
constexpr Codec kDoubled{Width::Byte, 2.0};

constexpr Stepping kStartKeys{200};
constexpr Stepping kChargeTimeKeys{250};
constexpr Stepping kVoltKeys{50};
constexpr Stepping kAccelKeys{100, nullptr};
constexpr Stepping kAlsKeys{15};

// Of the four voltage cells only the first is read by its address; the settings block has them all.
std::vector<Field> engineFields(MiscControls& w, core::SharedTables& tables) {
    return {
        {&A::CHARGE_TIME_OFF, w.txtchargetime, kFiftieths, kChargeTimeKeys},
        {&A::VOLT_OFF, w.txtVolt, kTicks, kVoltKeys, 1},
        {&A::MISC2_OFF, flags(w, tables)},
        {&A::ACCEL_OFF, w.txtAccel, kTicks, kAccelKeys},
        {&A::RYYPPY_OFF, w.txtRyyppy, kTicks, kStartKeys},
        {&A::START_HELP_OFF, w.txtStart, kTicks, kStartKeys},
        {&A::STARTHELP_LEN_OFF_8, w.txtStartHelpLen},
        {&A::RYYPPY_END, w.txtChokeEnd},
        {&A::MINTHR_OFF, w.lblMINTHR},
        {&A::MAXTHR_OFF, w.lblMAXTHR},
        {&A::MAPOFFSET_OFF, w.txtLoadOffset},
        {&A::MAPGAIN_OFF, w.txtLoadGain},
        {&A::LOAD_MODE, loadMode(w)},
        {&A::BOOSTPID_SETPOINT, w.txtBoostTav},
        {&A::MOTORBRAKE_LOW, w.txtMotorBrakeLow, kTwoBytes},
        {&A::MOTORBRAKE_HIGH, w.txtMotorBrakeHigh, kTwoBytes},
        {&A::LAUNCHCONTROL_LO, w.txtLaunchcontrol, kTwoBytes},
        {&A::LAUNCH_MODE_OFF, w.Combolaunchmode},
        {&A::IGN_EDGE_OFFSET, ignitionEdge(w)},
        {&A::INJ_MODE_OFFSET, injectionMode(w)},
        {&A::INJ_MULTIPLIER_OFF, shownMultiplier(w, tables)},
        {&A::INJ_MULTIPLIER_OFF, w.txtInjMultiplier, kByte, {}, kStoredOnly},
        {&A::PWM_MODE, pwmMode(w, tables)},
        {&A::NTC1_OFF, w.txtNTC1},
        {&A::NTC2_OFF, w.txtNTC2},
        {&A::WBO2_MODE_OFF, lambdaType(w)},
        {&A::INJADV_OFF0, w.txtInjAdv},
        {&A::IDLEMAP_OFF, w.txtInjIdleMap},
        {&A::IDLE_ADV0, w.txtIdleAdv},
    };
}

// The two rows of the lambda correction arrive in a block of their own.
std::vector<Field> limitFields(MiscControls& w) {
    return {
        {&A::ALS_ADV_OFF, w.txtALS_ign_retard, kRetardDegrees, kAlsKeys},
        {&A::ALS_FUEL_OFF, w.txtALS_fuel, kFuelPercent, kAlsKeys},
        {&A::LAUNCH_DELAY_OFF, w.txtlaunchdelay},
        {&A::FLATSHIFT_STARTDELAY_OFF, w.txtflatshiftstartdelay},
        {&A::FLATSHIFT_STOPDELAY_OFF, w.txtflatshiftstopdelay},
        {&A::ACCEL_DELAY_OFF, w.txtAccelDelay},
        {&A::ACCEL_LIMITER_MODE_OFF, w.txtAccelLimiterMode},
        {&A::ACCEL_LIMITER_VALUE_OFF, w.txtAccelLimiterValue},
        {&A::IDLEPID_MAX, w.txtIdleValveMax},
        {&A::IDLEPID_MIN, w.txtIdleValveMin},
        {&A::IDLEPID_SETPOINT_LO, shownSetpointLow(w)},
        {&A::IDLEPID_SETPOINT_HI, shownSetpointHigh(w)},
        {&A::IDLEPID_SETPOINT_LO, w.txtIdleValveSetpoint, kTwoBytes, {}, kStoredOnly},
        {&A::OIL_WARNING_OFF, w.txtOilWarning},
        {&A::AIR_WARNING_OFF, w.txtAirWarning},
        {&A::WATER_WARNING_OFF, w.txtWaterWarning},
        {&A::TEMP4_WARNING_OFF, w.txtTemp4Warning},
        {&A::VOLT1_WARNING_OFF, w.txtVolt1Warning, kDoubled},
        {&A::VOLT2_WARNING_OFF, w.txtVolt2Warning, kDoubled},
        {&A::VOLT3_WARNING_OFF, w.txtVolt3Warning, kDoubled},
        {&A::VOLT4_WARNING_OFF, w.txtVolt4Warning, kDoubled},
        {&A::RPMLIMIT_COLD_LOW_OFF, w.txtColdRPMlimit, kWord},
        {&A::NTC3_OFF, w.txtNTC3},
        {&A::NTC4_OFF, w.txtNTC4},
        {&A::NTC_MULTIPLIER_OFF, w.txtNTCMultiplier},
        {&A::BOOST_IGNCUT_OFF, w.txtBoostIgnCut},
        {&A::LAMBDATAV_OFF, w.txtLambdaTav, kByte, {}, kStoredOnly},
        {&A::LAMBDAVAIK_OFF, w.txtLambdaVaik, kByte, {}, kStoredOnly},
    };
}

}  // namespace

std::vector<Field> miscFields(MiscControls& window, core::SharedTables& tables) {
    auto rows = engineFields(window, tables);
    const auto limits = limitFields(window);
    rows.insert(rows.end(), limits.begin(), limits.end());
    return rows;
}

}  // namespace korvane::settings
