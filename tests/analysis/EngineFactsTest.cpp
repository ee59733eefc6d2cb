// What the steady agent has to know of the ECU, and how a frame reaches it.
#include <gtest/gtest.h>

#include "AnalysisBench.h"
#include "analysis/EngineFacts.h"

namespace korvane::analysis {
namespace {

using core::LiveChannel;
using maps::kLargeMaps;
using maps::kOrdinaryMaps;

class EngineFactsTest : public AnalysisBench {
protected:
    EngineFactsTest() {
        core::InitTimeUnits(tables_);
        tables_.ThrottleMin = 20;
        tables_.ThrottleMax = 220;
        misc(0, 0);
        tell(tables_.addresses.LOAD_MODE, 0);
        tell(tables_.addresses.MAPGAIN_OFF, 10);
        tell(tables_.addresses.MAPOFFSET_OFF, 0);
    }

    void tell(int address, std::uint8_t byte) {
        main_.ecuEeprom.told(address, byte);
        tables_.EEParams.at(static_cast<std::size_t>(address)).value = byte;
    }
    void misc(std::uint8_t offset, std::uint8_t enableHigh) {
        main_.ecuMisc.has({0, 0, 0, 0, 0, enableHigh, offset, 128, 6});
    }
    FactsFound facts() { return factsOf(tables_, main_, kOrdinaryMaps); }
    core::LiveValue& channel(LiveChannel which) { return tables_.liveValues.at(core::indexOf(which)); }
    void lambda(double raw, double value) {
        channel(LiveChannel::Lambda).raw = raw;
        channel(LiveChannel::Lambda).value = value;
    }
    steady::Frame frame(const LoadRule& rule = {}, const maps::MapGeometry& map = kOrdinaryMaps) {
        return frameOf(tables_, rule, map, 7.5);
    }
};

TEST_F(EngineFactsTest, WithoutAnOffsetTheInjectionModeDoesNotMatter) {
    ASSERT_TRUE(facts().facts) << facts().missing;
    EXPECT_EQ(facts().facts->offsetCounts, 0.0);
    EXPECT_EQ(facts().facts->highest, 255);
    EXPECT_TRUE(facts().facts->throttleKnown);
    EXPECT_FALSE(facts().facts->lambdaControl);
}

TEST_F(EngineFactsTest, TheMiscBlockMustBeKnown) {
    main_.ecuMisc.forget();
    EXPECT_FALSE(facts().facts);
    EXPECT_EQ(facts().missing, "the injection offset has not been read from the ECU since the program started");
}

// TickB is 512 clocks for a count of the map, TickF a quarter of 256 for a count of the offset: one eighth.
TEST_F(EngineFactsTest, AnOffsetInTimeIsAsManyCountsAsItTakes) {
    misc(40, 0);
    EXPECT_EQ(facts().missing, "the injection mode has not been read from the ECU since the program started");
    tell(tables_.addresses.INJ_MODE_OFFSET, 2);
    tell(tables_.addresses.INJ_MULTIPLIER_OFF, 0);
    ASSERT_TRUE(facts().facts);
    EXPECT_NEAR(facts().facts->offsetCounts, 5.0, 0.01);
    EXPECT_EQ(facts().facts->highest, 255);
}

TEST_F(EngineFactsTest, AnOffsetInCountsIsTakenAsItIsAndLowersTheStopOfTheKey) {
    misc(40, 0);
    tables_.InjOff_type = 1;
    ASSERT_TRUE(facts().facts);
    EXPECT_EQ(facts().facts->offsetCounts, 40.0);
    EXPECT_EQ(facts().facts->highest, 215);
}

TEST_F(EngineFactsTest, BitNineOfTheEnableWordIsTheEcusOwnControl) {
    misc(0, 0x02);
    EXPECT_TRUE(facts().facts->lambdaControl);
    misc(0, 0xFD);
    EXPECT_FALSE(facts().facts->lambdaControl);
}

TEST_F(EngineFactsTest, TheLoadCalculationMustBeKnown) {
    main_.ecuEeprom.lost(tables_.addresses.MAPGAIN_OFF);
    EXPECT_EQ(facts().missing, "the load calculation has not been read from the ECU since the program started");
}

// A connect forgets what was read before.
TEST_F(EngineFactsTest, WhatIsMissingSaysSinceWhen) {
    main_.ecuMisc.forget();
    main_.openings = 2;
    EXPECT_EQ(facts().missing, "the injection offset has not been read from the ECU since it was connected");
}

TEST_F(EngineFactsTest, LoadFromTheThrottleNeedsItsEnds) {
    tell(tables_.addresses.LOAD_MODE, 1);
    EXPECT_TRUE(facts().facts->load.fromThrottle);
    tables_.ThrottleMax = 0;
    EXPECT_EQ(facts().missing, "the ends of the throttle have not been read from the ECU since the program started");
}

// 0.8 bar, 0.2 bar offset, gain 12: 0.6 * 120 per cent.
TEST_F(EngineFactsTest, LoadFollowsFromPressureGainAndOffset) {
    tell(tables_.addresses.MAPGAIN_OFF, 12);
    tell(tables_.addresses.MAPOFFSET_OFF, 20);
    channel(LiveChannel::Pressure).value = 0.8;
    EXPECT_NEAR(frame(facts().facts->load).load, 72.0, 1e-9);
    channel(LiveChannel::Pressure).value = 0.1;
    EXPECT_EQ(frame(facts().facts->load).load, 0.0);
}

TEST_F(EngineFactsTest, AFrameHasTheChannels) {
    channel(LiveChannel::Rpm).value = 3210;
    channel(LiveChannel::WaterTemperature).value = 82;
    channel(LiveChannel::InjectionDuty).raw = 77;
    channel(LiveChannel::MapPlace).raw = 53;
    channel(LiveChannel::Flags).raw = 0x2008;
    lambda(90, 13.5);
    const auto seen = frame();
    EXPECT_EQ(seen.seconds, 7.5);
    EXPECT_EQ(seen.rpm, 3210);
    EXPECT_EQ(seen.waterC, 82);
    EXPECT_EQ(seen.duty, 77);
    EXPECT_EQ(seen.cell, 53U);
    EXPECT_EQ(seen.lamps, 0x2008U);
    EXPECT_EQ(seen.lambda, 13.5);
}

// A byte of 255 means 255 / 256 * 10 + 10.
TEST_F(EngineFactsTest, ACalibrationDoesNotHideTheEndsOfTheSensor) {
    lambda(255, 18.0);
    EXPECT_NEAR(frame().lambda, 19.96, 0.01);
    lambda(0, 11.0);
    EXPECT_EQ(frame().lambda, 10.0);
}

// One byte names the cells 0 to 255: twelve whole rows of twenty.
TEST_F(EngineFactsTest, OfALargeMapTheRowsThatCanBeSentAreUsed) {
    EXPECT_EQ(gridOf(kOrdinaryMaps).cells(), 160U);
    EXPECT_EQ(gridOf(kLargeMaps).columns, 20);
    EXPECT_EQ(gridOf(kLargeMaps).rows, 12);
    channel(LiveChannel::Pressure).value = 1.14;
    EXPECT_TRUE(gridOf(kLargeMaps).contains(steady::Grid::placeOf(3000, frame({}, kLargeMaps).load)));
    channel(LiveChannel::Pressure).value = 1.16;
    EXPECT_FALSE(gridOf(kLargeMaps).contains(steady::Grid::placeOf(3000, frame({}, kLargeMaps).load)));
}

}  // namespace
}  // namespace korvane::analysis
