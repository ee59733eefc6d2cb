// The variables through which code reaches the EEPROM parameters: it uses the variable, never the number.
#pragma once

#include <span>
#include <string_view>

namespace korvane::core {

// clang-format off
#define KORVANE_PARAMETERS(X)                                                                                         \
    X(MISC2_OFF) X(RPM_LIMIT_LOW_OFF) X(RPM_LIMIT_HI_OFF) X(RPM_SHIFT_LOW_OFF) X(RPM_SHIFT_HI_OFF)                    \
    X(MISC_LOW_OFF) X(MISC_HI_OFF) X(INJ_karkea_OFF) X(IGN_karkea_OFF) X(INJ_jakaja_OFF) X(START_HELP_OFF)            \
    X(RYYPPY_OFF) X(CHARGE_TIME_OFF) X(ACCEL_DELAY_OFF) X(INJ_OFF) X(IGN_OFF) X(INJ_MODE_OFFSET)                      \
    X(IGN_EDGE_OFFSET) X(ACCEL_OFF) X(VOLT_OFF) X(MINTHR_OFF) X(MAXTHR_OFF) X(RYYPPY_END) X(LAMBDAPID_STEP)           \
    X(LAMBDAPID_SPEED) X(LAMBDATAV_OFF) X(LAMBDAVAIK_OFF) X(IDLE_ADV0) X(IDLE_ADV1) X(IDLE_ADV2) X(IDLE_ADV3)         \
    X(IDLE_ADV4) X(PWM_MODE) X(PWM_OFF) X(MAPGAIN_OFF) X(MAPOFFSET_OFF) X(LOAD_MODE) X(IDLEPID_SPEED)                 \
    X(IDLEPID_STEP) X(IDLEPID_MIN) X(IDLEPID_MAX) X(IDLEPID_SETPOINT_LO) X(IDLEPID_SETPOINT_HI)                       \
    X(MOTORBRAKE_LOW) X(MOTORBRAKE_HIGH) X(LAUNCHCONTROL_LO) X(LAUNCHCONTROL_HI) X(IGNORDER_OFF)                      \
    X(IGNDERIVGAIN_OFF) X(BOOST_IGNCUT_OFF) X(NTC1_OFF) X(NTC2_OFF) X(WBO2_MODE_OFF) X(BOOSTPID_SPEED)                \
    X(BOOSTPID_STEP) X(BOOSTPID_MAX) X(BOOSTPID_SETPOINT) X(INJADV_OFF0) X(INJADV_OFF1) X(INJADV_OFF2)                \
    X(INJADV_OFF3) X(INJADV_OFF4) X(INJADV_OFF5) X(INJADV_OFF6) X(INJADV_OFF7) X(INJADV_OFF8) X(INJADV_OFF9)          \
    X(INJADV_OFF10) X(INJADV_OFF11) X(INJADV_OFF12) X(INJADV_OFF13) X(INJADV_OFF14) X(INJADV_OFF15)                   \
    X(INJ_ECON_OFFSET) X(IGN_ECON_OFFSET) X(IDLEMAP_OFF) X(ALS_ADV_OFF) X(ALS_FUEL_OFF) X(NTC3_OFF) X(NTC4_OFF)       \
    X(LAUNCH_MODE_OFF) X(LAUNCH_DELAY_OFF) X(ACCEL_LIMITER_MODE_OFF) X(ACCEL_LIMITER_VALUE_OFF)                       \
    X(FLATSHIFT_STARTDELAY_OFF) X(FLATSHIFT_STOPDELAY_OFF) X(NTC_MULTIPLIER_OFF) X(WATER_WARNING_OFF)                 \
    X(AIR_WARNING_OFF) X(OIL_WARNING_OFF) X(TEMP4_WARNING_OFF) X(VOLT1_WARNING_OFF) X(VOLT2_WARNING_OFF)              \
    X(VOLT3_WARNING_OFF) X(VOLT4_WARNING_OFF) X(VTC_RPM_LO_OFF) X(VTC_RPM_HI_OFF) X(VTC_MAP_OFF)                      \
    X(RPMLIMIT_COLD_LOW_OFF) X(RPMLIMIT_COLD_HI_OFF) X(INJ_MULTIPLIER_OFF) X(STARTHELP_LEN_OFF_8)                     \
    X(DEG_COUNT_FOR_RPM_OFF) X(DISABLE_CYL_DEG_COUNT_OFF) X(LAUNCH_LIMIT_OFF) X(LAUNCH_LIMIT_PRE_OFF)                 \
    X(RPM_LIMIT_OFF) X(RPM_LIMIT_PRE_OFF) X(INPUT1_LIMIT_OFF) X(INPUT1_LIMIT_FUNC_OFF) X(INPUT1_LIMIT_F_VAL_OFF)      \
    X(INPUT2_LIMIT_OFF) X(INPUT2_LIMIT_FUNC_OFF) X(INPUT2_LIMIT_F_VAL_OFF) X(INPUT3_LIMIT_OFF)                        \
    X(INPUT3_LIMIT_FUNC_OFF) X(INPUT3_LIMIT_F_VAL_OFF) X(INPUT4_LIMIT_OFF) X(INPUT4_LIMIT_FUNC_OFF)                   \
    X(INPUT4_LIMIT_F_VAL_OFF) X(INPUT5_LIMIT_OFF) X(INPUT5_LIMIT_FUNC_OFF) X(INPUT5_LIMIT_F_VAL_OFF)                  \
    X(INPUT6_LIMIT_OFF) X(INPUT6_LIMIT_FUNC_OFF) X(INPUT6_LIMIT_F_VAL_OFF) X(INPUT7_LIMIT_OFF)                        \
    X(INPUT7_LIMIT_FUNC_OFF) X(INPUT7_LIMIT_F_VAL_OFF) X(INPUT8_LIMIT_OFF) X(INPUT8_LIMIT_FUNC_OFF)                   \
    X(INPUT8_LIMIT_F_VAL_OFF) X(CYL_COUNT_OFF) X(SW_VER) X(SW_TYPE)
// clang-format on

// An address for each parameter; -1 before a layout has been set. A numbered parameter's neighbours follow it, and the
// cells of a range follow its first.
struct ParameterAddresses {
#define KORVANE_MEMBER(name) int name = -1;
    KORVANE_PARAMETERS(KORVANE_MEMBER)
#undef KORVANE_MEMBER
};

// How a variable is reached by its name.
struct ParameterVariable {
    std::string_view name;
    int ParameterAddresses::*member;
};

// All variables, in rising order of address in the general layout.
[[nodiscard]] std::span<const ParameterVariable> parameterVariables();

// The layout that the firmware type `swType` uses. All types have the general one, where each variable holds its
// parameter's address. Type 30 alone has no idle regulator and keeps its launch limit in those cells.
[[nodiscard]] ParameterAddresses parameterAddresses(int swType);

}  // namespace korvane::core
