#include "settings/FullReadPlan.h"

#include <array>

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using fields::next;
using fields::one;
using fields::range;
using fields::twice;
using fields::word;

constexpr int kPollInterval = 500;  // ms; the settings block starts the poll again while the list still runs

// In the order of the requests; some parameters are asked for twice.
constexpr std::array kSteps{
    one(&A::MOTORBRAKE_LOW, 10),
    next(&A::MOTORBRAKE_LOW),
    one(&A::MOTORBRAKE_HIGH),
    next(&A::MOTORBRAKE_HIGH, 12),
    twice(one(&A::LAUNCHCONTROL_LO)),
    one(&A::LAUNCHCONTROL_HI),
    one(&A::LAUNCH_MODE_OFF),
    one(&A::IGN_EDGE_OFFSET),
    range(&A::IDLE_ADV0, 5, {16, 1}),
    one(&A::ACCEL_DELAY_OFF),
    one(&A::STARTHELP_LEN_OFF_8),
    one(&A::RYYPPY_END),
    range(&A::INJADV_OFF0, 16, {45, 1}),
    one(&A::INJ_MODE_OFFSET),
    one(&A::INJ_MULTIPLIER_OFF, 12),
    one(&A::MISC2_OFF, 20),
    one(&A::MAPOFFSET_OFF, 22),
    one(&A::MAPGAIN_OFF),
    twice(one(&A::LOAD_MODE)),
    one(&A::PWM_MODE, 25),
    range(&A::BOOSTPID_SETPOINT, 16, {25, 1}),
    one(&A::WBO2_MODE_OFF),
    one(&A::NTC1_OFF),
    one(&A::NTC2_OFF, 43),
    one(&A::NTC3_OFF),
    one(&A::NTC4_OFF),
    one(&A::NTC_MULTIPLIER_OFF, 45),
    range(&A::IDLEMAP_OFF, 16, {70, 0.5}),
    one(&A::ALS_ADV_OFF),
    one(&A::ALS_FUEL_OFF),
    one(&A::LAUNCH_DELAY_OFF),
    one(&A::FLATSHIFT_STARTDELAY_OFF),
    one(&A::FLATSHIFT_STOPDELAY_OFF, 87),
    one(&A::IDLEPID_MAX),
    one(&A::IDLEPID_MIN),
    one(&A::IDLEPID_SETPOINT_LO),
    one(&A::IDLEPID_SETPOINT_HI, 90),
    one(&A::BOOST_IGNCUT_OFF),
    one(&A::WATER_WARNING_OFF, 91),
    one(&A::OIL_WARNING_OFF),
    one(&A::AIR_WARNING_OFF),
    one(&A::TEMP4_WARNING_OFF),
    one(&A::VOLT1_WARNING_OFF, 92),
    one(&A::VOLT2_WARNING_OFF),
    one(&A::VOLT3_WARNING_OFF),
    one(&A::VOLT4_WARNING_OFF, 93),
    twice(word(&A::RPMLIMIT_COLD_LOW_OFF)),
    one(&A::IDLEPID_SPEED),
    one(&A::IDLEPID_STEP),
    one(&A::BOOSTPID_SPEED),
    one(&A::BOOSTPID_STEP),
    one(&A::BOOSTPID_MAX, 94),
    one(&A::VTC_MAP_OFF),
    word(&A::VTC_RPM_LO_OFF),
    one(&A::IGNDERIVGAIN_OFF),
    one(&A::IGNORDER_OFF),
    one(&A::MINTHR_OFF),
    one(&A::MAXTHR_OFF),
    one(&A::START_HELP_OFF),
    one(&A::RYYPPY_OFF),
    one(&A::RYYPPY_END, 95),
    one(&A::CHARGE_TIME_OFF),
    one(&A::INJ_jakaja_OFF),
    one(&A::IGN_karkea_OFF),
    one(&A::INJ_karkea_OFF),
    one(&A::INJ_MULTIPLIER_OFF),
    one(&A::LAUNCH_MODE_OFF),
    one(&A::LAUNCH_DELAY_OFF),
    one(&A::ACCEL_LIMITER_MODE_OFF),
    one(&A::ACCEL_LIMITER_VALUE_OFF),
    one(&A::VOLT_OFF),
    range(&A::ACCEL_OFF, 10, {95, 0.5}),
};

}  // namespace

fields::ReadPlan fullReadPlan() {
    return {kSteps, kFullReadPause, kFullReadCaptions, kPollInterval};
}

}  // namespace korvane::settings
