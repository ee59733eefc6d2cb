#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <utility>

#include "core/ParameterNames.h"
#include "core/tables/Module1.h"
#include "core/tables/ModuleReg.h"
#include "core/tables/SharedTables.h"
#include "support/MemoryPreferences.h"

namespace korvane::core {
namespace {

class Module1 : public testing::Test {
protected:
    void init() { InitModule(tables_, preferences_); }

    SharedTables tables_;
    support::MemoryPreferences preferences_;
};

TEST_F(Module1, TypesHaveTheirTexts) {
    init();
    EXPECT_EQ(tables_.SWTypeNames.at(10), "Korvane3 full engine control");
    EXPECT_EQ(tables_.SWTypeNames.at(11), "Korvane3 full engine control");
    EXPECT_EQ(tables_.SWTypeNames.at(12), "Korvane3 full engine control 6cyl Nissan");
    EXPECT_EQ(tables_.SWTypeNames.at(13), "Korvane3 full engine control 6cyl TKR");
    EXPECT_EQ(tables_.SWTypeNames.at(14), "Korvane3 full engine control 6cyl, Nissan, Large");
    EXPECT_EQ(tables_.SWTypeNames.at(15), "Korvane3 full engine control 4cyl, TKR, Large");
    EXPECT_EQ(tables_.SWTypeNames.at(20), "Mirel Injection, full");
    EXPECT_EQ(tables_.SWTypeNames.at(21), "Mirel Injection, full v3.3");
    EXPECT_EQ(tables_.SWTypeNames.at(30), "Mirel Ignition");
    EXPECT_EQ(tables_.SWTypeNames.at(31), "Mirel Ignition, full");
    EXPECT_EQ(tables_.SWTypeNames.at(32), "Mirel Ignition, QV");
    EXPECT_EQ(tables_.SWTypeNames.at(112), "KorvaneMirel, Advanced Ignition limiter");
    EXPECT_EQ(tables_.SWTypeNames.at(210), "KorvaneMirel, Mirel Engine controls; 60deg trig");
    EXPECT_EQ(tables_.SWTypeNames.at(211), "KorvaneMirel, Mirel Engine controls; TKR trig");
    EXPECT_EQ(tables_.SWTypeNames.at(212), "KorvaneMirel, Mirel Engine controls; Nissan");
    EXPECT_EQ(tables_.SWTypeNames.at(213), "KorvaneMirel, Mirel Engine controls; Nissan, Large");
}

TEST_F(Module1, EveryOtherTypeIsADash) {
    init();
    EXPECT_EQ(std::ranges::count(tables_.SWTypeNames, "-"), 256 - 16);
    EXPECT_EQ(tables_.SWTypeNames.at(0), "-");
    EXPECT_EQ(tables_.SWTypeNames.at(99), "-");
    EXPECT_EQ(tables_.SWTypeNames.at(255), "-");
}

TEST_F(Module1, ReadsItsTwoPreferences) {
    init();
    EXPECT_EQ(tables_.InjOff_type, 0);
    EXPECT_EQ(tables_.Inj8ms_mode, 0);
    preferences_.write(kSettingsKey, "InjOff_type", "1");
    preferences_.write(kSettingsKey, "Inj8ms_mode", "2");
    init();
    EXPECT_EQ(tables_.InjOff_type, 1);
    EXPECT_EQ(tables_.Inj8ms_mode, 2);
}

TEST_F(Module1, BitMaskHoldsThePowersOfTwo) {
    init();
    EXPECT_EQ(tables_.BitMask.at(0), 1);
    EXPECT_EQ(tables_.BitMask.at(9), 512);
    EXPECT_EQ(tables_.BitMask.at(15), 32768);
}

TEST_F(Module1, EverythingIsEnabledUntilTheEcuHasAnswered) {
    tables_.Features = 257;
    init();
    EXPECT_EQ(tables_.Features, -1);
}

TEST_F(Module1, TimeUnitsFollowTheClock) {
    InitTimeUnits(tables_);
    EXPECT_DOUBLE_EQ(tables_.TickA, 1014000.0 / 18432000.0);
    EXPECT_DOUBLE_EQ(tables_.TickD, 1.0 / 72.0);
    EXPECT_NEAR(tables_.TickA, 0.0550130, 5e-8);
    EXPECT_NEAR(tables_.TickB, 0.0277778, 5e-8);
    EXPECT_NEAR(tables_.TickC, 0.0416667, 5e-8);
    EXPECT_NEAR(tables_.TickD, 0.0138889, 5e-8);
    EXPECT_NEAR(tables_.TickE, 0.0069444, 5e-8);
    EXPECT_NEAR(tables_.TickF, 0.0034722, 5e-8);
}

TEST_F(Module1, RowsHaveTheirNamesAndMarks) {
    init();
    EXPECT_EQ(tables_.EEParams.at(2).name, "RPM_LIMIT_LOW_OFF");
    EXPECT_TRUE(tables_.EEParams.at(2).is16bit);
    EXPECT_EQ(tables_.EEParams.at(3).name, "RPM_LIMIT_HI_OFF");
    EXPECT_FALSE(tables_.EEParams.at(3).is16bit);
    EXPECT_EQ(tables_.EEParams.at(513).name, " IGNORDER_OFF");
    EXPECT_EQ(tables_.EEParams.at(2999).name, "SW_VER");
    EXPECT_TRUE(tables_.EEParams.at(2999).is16bit);
    EXPECT_EQ(tables_.EEParams.at(3000).name, "SW_TYPE");
    EXPECT_FALSE(tables_.EEParams.at(3000).is16bit);
    EXPECT_EQ(tables_.EEParams.at(0).name, "");
    EXPECT_EQ(tables_.EEParams.at(100).name, "");
}

TEST_F(Module1, RowsWithoutANameAreNotMarked) {
    init();
    const auto named = std::ranges::count_if(tables_.EEParams, [](const EEParam& row) { return !row.name.empty(); });
    EXPECT_EQ(static_cast<std::size_t>(named), parameterNames().size());
    EXPECT_TRUE(
        std::ranges::none_of(tables_.EEParams, [](const EEParam& row) { return row.name.empty() && row.is16bit; }));
}

TEST_F(Module1, TheTypeIsKeptInItsRow) {
    init();
    EXPECT_EQ(tables_.EEParams.at(3000).value, ParameterValue(std::int32_t{0}));
    InitParams(tables_, 213);
    EXPECT_EQ(tables_.EEParams.at(3000).value, ParameterValue(std::int32_t{213}));
}

TEST_F(Module1, ANewLayoutKeepsWhatWasRead) {
    init();
    tables_.EEParams.at(511).value = std::int32_t{6000};
    tables_.EEImage.at(511) = 112;
    tables_.EETime.at(511) = "12:00:00";
    InitParams(tables_, 30);
    EXPECT_EQ(tables_.EEParams.at(511).value, ParameterValue(std::int32_t{6000}));
    EXPECT_EQ(tables_.EEImage.at(511), 112);
    EXPECT_EQ(tables_.EETime.at(511), "12:00:00");
}

TEST_F(Module1, Type30SharesTheIdleRegulatorsCells) {
    init();
    InitParams(tables_, 30);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 500);
    EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_HI, 501);
    EXPECT_EQ(tables_.addresses.IDLEPID_SPEED, 500);
    EXPECT_EQ(tables_.addresses.IDLEPID_STEP, 501);
    EXPECT_EQ(tables_.addresses.CYL_COUNT_OFF, 1960);
}

TEST_F(Module1, Type30MovesNoRows) {
    init();
    InitParams(tables_, 30);
    EXPECT_EQ(tables_.EEParams.at(511).name, "LAUNCHCONTROL_LO");
    EXPECT_TRUE(tables_.EEParams.at(511).is16bit);
    EXPECT_EQ(tables_.EEParams.at(500).name, "IDLEPID_SPEED");
    EXPECT_FALSE(tables_.EEParams.at(500).is16bit);
}

TEST_F(Module1, AnyOtherTypeRestoresTheGeneralLayout) {
    init();
    for (const int type : {10, 31, 32, 99, 0}) {
        InitParams(tables_, 30);
        InitParams(tables_, type);
        EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_LO, 511) << type;
        EXPECT_EQ(tables_.addresses.LAUNCHCONTROL_HI, 512) << type;
    }
}

TEST(ParameterAddresses, HoldTheAddressesOfTheirNames) {
    using A = ParameterAddresses;
    const A addresses = parameterAddresses(11);
    for (const auto& [address, expected] : {std::pair{&A::MISC2_OFF, 1},
                                            {&A::INJ_MODE_OFFSET, 345},
                                            {&A::IDLE_ADV4, 396},
                                            {&A::IGNORDER_OFF, 513},
                                            {&A::INJADV_OFF0, 558},
                                            {&A::INJADV_OFF15, 573},
                                            {&A::VOLT4_WARNING_OFF, 987},
                                            {&A::INPUT1_LIMIT_OFF, 1912},
                                            {&A::INPUT8_LIMIT_FUNC_OFF, 1956},
                                            {&A::INPUT8_LIMIT_F_VAL_OFF, 1958},
                                            {&A::CYL_COUNT_OFF, 1960},
                                            {&A::SW_VER, 2999},
                                            {&A::SW_TYPE, 3000}}) {
        EXPECT_EQ(addresses.*address, expected);
    }
}

TEST(ParameterAddresses, ThereIsOneVariableForEachParameter) {
    const ParameterAddresses addresses = parameterAddresses(0);
    std::set<int> ofVariables;
    for (const ParameterVariable& variable : parameterVariables()) {
        EXPECT_GE(addresses.*variable.member, 0) << variable.name;
        EXPECT_TRUE(ofVariables.insert(addresses.*variable.member).second) << variable.name;
    }
    std::set<int> ofNames;
    for (const ParameterName& parameter : parameterNames()) {
        ofNames.insert(parameter.address);
    }
    EXPECT_EQ(ofVariables, ofNames);
}

}  // namespace
}  // namespace korvane::core
