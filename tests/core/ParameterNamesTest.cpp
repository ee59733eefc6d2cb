#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>

#include "core/ParameterNames.h"

namespace korvane::core {
namespace {

// The parameters as the ECU keeps them, but for those that are numbered.
struct Row {
    std::string_view name;
    int address;
};

constexpr std::array kBytes = {
    Row{"MISC2_OFF", 1},
    Row{"RPM_LIMIT_HI_OFF", 3},
    Row{"RPM_SHIFT_HI_OFF", 5},
    Row{"MISC_HI_OFF", 7},
    Row{"INJ_karkea_OFF", 8},
    Row{"IGN_karkea_OFF", 9},
    Row{"INJ_jakaja_OFF", 10},
    Row{"START_HELP_OFF", 11},
    Row{"RYYPPY_OFF", 12},
    Row{"CHARGE_TIME_OFF", 13},
    Row{"ACCEL_DELAY_OFF", 14},
    Row{"INJ_OFF", 16},
    Row{"IGN_OFF", 180},
    Row{"INJ_MODE_OFFSET", 345},
    Row{"IGN_EDGE_OFFSET", 346},
    Row{"ACCEL_OFF", 350},
    Row{"VOLT_OFF", 361},
    Row{"MINTHR_OFF", 365},
    Row{"MAXTHR_OFF", 366},
    Row{"RYYPPY_END", 367},
    Row{"LAMBDAPID_STEP", 368},
    Row{"LAMBDAPID_SPEED", 369},
    Row{"LAMBDATAV_OFF", 370},
    Row{"LAMBDAVAIK_OFF", 380},
    Row{"PWM_MODE", 399},
    Row{"PWM_OFF", 400},
    Row{"MAPGAIN_OFF", 496},
    Row{"MAPOFFSET_OFF", 497},
    Row{"LOAD_MODE", 498},
    Row{"IDLEPID_SPEED", 500},
    Row{"IDLEPID_STEP", 501},
    Row{"IDLEPID_MIN", 502},
    Row{"IDLEPID_MAX", 503},
    Row{"IDLEPID_SETPOINT_HI", 505},
    Row{"LAUNCHCONTROL_HI", 512},
    Row{" IGNORDER_OFF", 513},
    Row{"IGNDERIVGAIN_OFF", 514},
    Row{"BOOST_IGNCUT_OFF", 515},
    Row{"NTC1_OFF", 516},
    Row{"NTC2_OFF", 517},
    Row{"WBO2_MODE_OFF", 518},
    Row{"BOOSTPID_SPEED", 520},
    Row{"BOOSTPID_STEP", 521},
    Row{"BOOSTPID_MAX", 522},
    Row{"BOOSTPID_SETPOINT", 540},
    Row{"INJ_ECON_OFFSET", 616},
    Row{"IGN_ECON_OFFSET", 780},
    Row{"IDLEMAP_OFF", 950},
    Row{"ALS_ADV_OFF", 967},
    Row{"ALS_FUEL_OFF", 968},
    Row{"NTC3_OFF", 969},
    Row{"NTC4_OFF", 970},
    Row{"LAUNCH_MODE_OFF", 971},
    Row{"LAUNCH_DELAY_OFF", 972},
    Row{"ACCEL_LIMITER_MODE_OFF", 973},
    Row{"ACCEL_LIMITER_VALUE_OFF", 974},
    Row{"FLATSHIFT_STARTDELAY_OFF", 977},
    Row{"FLATSHIFT_STOPDELAY_OFF", 978},
    Row{"NTC_MULTIPLIER_OFF", 979},
    Row{"WATER_WARNING_OFF", 980},
    Row{"AIR_WARNING_OFF", 981},
    Row{"OIL_WARNING_OFF", 982},
    Row{"TEMP4_WARNING_OFF", 983},
    Row{"VTC_RPM_HI_OFF", 1001},
    Row{"VTC_MAP_OFF", 1002},
    Row{"RPMLIMIT_COLD_HI_OFF", 1006},
    Row{"INJ_MULTIPLIER_OFF", 1026},
    Row{"STARTHELP_LEN_OFF_8", 1027},
    Row{"SW_TYPE", 3000},
};

constexpr std::array kWords = {
    Row{"RPM_LIMIT_LOW_OFF", 2},
    Row{"RPM_SHIFT_LOW_OFF", 4},
    Row{"MISC_LOW_OFF", 6},
    Row{"IDLEPID_SETPOINT_LO", 504},
    Row{"MOTORBRAKE_LOW", 507},
    Row{"MOTORBRAKE_HIGH", 509},
    Row{"LAUNCHCONTROL_LO", 511},
    Row{"VTC_RPM_LO_OFF", 1000},
    Row{"RPMLIMIT_COLD_LOW_OFF", 1005},
    Row{"DEG_COUNT_FOR_RPM_OFF", 1900},
    Row{"DISABLE_CYL_DEG_COUNT_OFF", 1902},
    Row{"LAUNCH_LIMIT_OFF", 1904},
    Row{"LAUNCH_LIMIT_PRE_OFF", 1906},
    Row{"RPM_LIMIT_OFF", 1908},
    Row{"RPM_LIMIT_PRE_OFF", 1910},
    Row{"CYL_COUNT_OFF", 1960},
    Row{"SW_VER", 2999},
};

bool isWord(std::string_view name) {
    const auto names = parameterNames();
    const auto found = std::ranges::find(names, name, &ParameterName::name);
    return found != names.end() && found->is16bit;
}

TEST(ParameterNames, GivesTheAddressOfAName) {
    for (const Row& row :
         {Row{"MISC2_OFF", 1}, Row{"RPM_LIMIT_LOW_OFF", 2}, Row{"INJ_OFF", 16}, Row{"IGN_OFF", 180},
          Row{"INJ_MODE_OFFSET", 345}, Row{"PWM_OFF", 400}, Row{"LOAD_MODE", 498}, Row{"LAUNCHCONTROL_LO", 511},
          Row{"INJ_MULTIPLIER_OFF", 1026}, Row{"CYL_COUNT_OFF", 1960}, Row{"SW_VER", 2999}, Row{"SW_TYPE", 3000}}) {
        EXPECT_EQ(addressOf(row.name), row.address) << row.name;
    }
}

TEST(ParameterNames, EachParameterHasItsAddressAndWidth) {
    for (const Row& row : kBytes) {
        EXPECT_EQ(addressOf(row.name), row.address) << row.name;
        EXPECT_FALSE(isWord(row.name)) << row.name;
    }
    for (const Row& row : kWords) {
        EXPECT_EQ(addressOf(row.name), row.address) << row.name;
        EXPECT_TRUE(isWord(row.name)) << row.name;
    }
    // The rest are 5 idle advances, 16 injection advances, 4 voltage warnings and three for each of 8 inputs.
    EXPECT_EQ(parameterNames().size(), kBytes.size() + kWords.size() + 5 + 16 + 4 + 3 * 8);
}

TEST(ParameterNames, HasNoAddressForAnUnknownName) {
    EXPECT_EQ(addressOf(""), -1);
    EXPECT_EQ(addressOf("misc2_off"), -1);
    EXPECT_EQ(addressOf("INPUT9_LIMIT_OFF"), -1);
}

TEST(ParameterNames, KeepsTheLeadingBlankOfTheIgnitionOrder) {
    EXPECT_EQ(addressOf(" IGNORDER_OFF"), 513);
    EXPECT_EQ(addressOf("IGNORDER_OFF"), -1);
}

TEST(ParameterNames, ListsNumberedNamesOneByOne) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(addressOf("IDLE_ADV" + std::to_string(i)), 392 + i);
    }
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(addressOf("INJADV_OFF" + std::to_string(i)), 558 + i);
    }
    for (int n = 1; n <= 4; ++n) {
        EXPECT_EQ(addressOf("VOLT" + std::to_string(n) + "_WARNING_OFF"), 983 + n);
    }
    for (int n = 1; n <= 8; ++n) {
        const std::string input = "INPUT" + std::to_string(n);
        EXPECT_EQ(addressOf(input + "_LIMIT_OFF"), 1912 + 6 * (n - 1));
        EXPECT_EQ(addressOf(input + "_LIMIT_FUNC_OFF"), 1914 + 6 * (n - 1));
        EXPECT_EQ(addressOf(input + "_LIMIT_F_VAL_OFF"), 1916 + 6 * (n - 1));
    }
}

TEST(ParameterNames, NamesTheFirstCellOfARowOnly) {
    std::set<int> addresses;
    for (const ParameterName& row : parameterNames()) {
        addresses.insert(row.address);
    }
    EXPECT_TRUE(addresses.contains(350));
    EXPECT_FALSE(addresses.contains(351));
    EXPECT_TRUE(addresses.contains(540));
    EXPECT_FALSE(addresses.contains(541));
}

TEST(ParameterNames, AreInRisingOrderWithEachAddressAndNameOnce) {
    const auto names = parameterNames();
    for (std::size_t i = 1; i < names.size(); ++i) {
        EXPECT_LT(names[i - 1].address, names[i].address) << names[i].name;
    }
    std::set<std::string_view> distinct;
    for (const ParameterName& row : names) {
        distinct.insert(row.name);
    }
    EXPECT_EQ(distinct.size(), names.size());
}

TEST(ParameterNames, MarkTheWords) {
    for (const char* name :
         {"RPM_LIMIT_LOW_OFF", "RPM_SHIFT_LOW_OFF", "MISC_LOW_OFF", "IDLEPID_SETPOINT_LO", "MOTORBRAKE_LOW",
          "MOTORBRAKE_HIGH", "LAUNCHCONTROL_LO", "VTC_RPM_LO_OFF", "RPMLIMIT_COLD_LOW_OFF", "DEG_COUNT_FOR_RPM_OFF",
          "DISABLE_CYL_DEG_COUNT_OFF", "LAUNCH_LIMIT_OFF", "LAUNCH_LIMIT_PRE_OFF", "RPM_LIMIT_OFF", "RPM_LIMIT_PRE_OFF",
          "INPUT1_LIMIT_OFF", "INPUT8_LIMIT_F_VAL_OFF", "CYL_COUNT_OFF", "SW_VER"}) {
        EXPECT_TRUE(isWord(name)) << name;
    }
    for (const char* name : {"RPM_LIMIT_HI_OFF", "LAUNCHCONTROL_HI", "IDLEPID_SETPOINT_HI", "INPUT1_LIMIT_FUNC_OFF",
                             "INPUT8_LIMIT_FUNC_OFF", "SW_TYPE", "INJ_OFF"}) {
        EXPECT_FALSE(isWord(name)) << name;
    }
    const auto names = parameterNames();
    // 15 single words and two for each of the eight inputs, CYL_COUNT_OFF and SW_VER.
    EXPECT_EQ(std::ranges::count(names, true, &ParameterName::is16bit), 15 + 2 * 8 + 2);
}

}  // namespace
}  // namespace korvane::core
