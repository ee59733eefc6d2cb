#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "core/ParameterNames.h"

namespace korvane::core {
namespace {

bool isWord(std::string_view name) {
    const auto names = parameterNames();
    const auto found = std::ranges::find(names, name, &ParameterName::name);
    return found != names.end() && found->is16bit;
}

TEST(ParameterNames, GivesTheAddressOfAName) {
    EXPECT_EQ(addressOf("MISC2_OFF"), 1);
    EXPECT_EQ(addressOf("RPM_LIMIT_LOW_OFF"), 2);
    EXPECT_EQ(addressOf("INJ_OFF"), 16);
    EXPECT_EQ(addressOf("IGN_OFF"), 180);
    EXPECT_EQ(addressOf("INJ_MODE_OFFSET"), 345);
    EXPECT_EQ(addressOf("PWM_OFF"), 400);
    EXPECT_EQ(addressOf("LOAD_MODE"), 498);
    EXPECT_EQ(addressOf("LAUNCHCONTROL_LO"), 511);
    EXPECT_EQ(addressOf("INJ_MULTIPLIER_OFF"), 1026);
    EXPECT_EQ(addressOf("CYL_COUNT_OFF"), 1960);
    EXPECT_EQ(addressOf("SW_VER"), 2999);
    EXPECT_EQ(addressOf("SW_TYPE"), 3000);
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
