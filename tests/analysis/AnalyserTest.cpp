#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AnalysisBench.h"

namespace korvane::analysis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnalyserTest : public AnalysisBench {
protected:
    AnalyserTest() { analyser_.setLogData(true); }
};

TEST_F(AnalyserTest, StartsWithTheDefaultTargets) {
    EXPECT_EQ(analyser_.Setpointget(0), 12.5F);
    EXPECT_EQ(analyser_.Setpointget(320), 12.5F);
    EXPECT_EQ(analyser_.Proposal(0), 0.0F);
    EXPECT_EQ(analyser_.LambdaScale, 1.0F);
    EXPECT_FALSE(clsInjAnalyser(machine_.machine, tables_, main_.MSComm1).LogData());
    EXPECT_FALSE(analyser_.simpleMode() || analyser_.AgentEnable());
    EXPECT_EQ(analyser_.timerAgent.Interval, 300);
    EXPECT_EQ(analyser_.mapSize, 160);
    EXPECT_EQ(analyser_.columns, 16);
    EXPECT_EQ(analyser_.rows, 10);
}

TEST_F(AnalyserTest, AnyOtherSizeIsThatOfTheLargeMaps) {
    analyser_.setMapSize(320);
    EXPECT_EQ(analyser_.columns, 20);
    EXPECT_EQ(analyser_.rows, 16);
    analyser_.setMapSize(7);
    EXPECT_EQ(analyser_.columns, 20);
    analyser_.setMapSize(160);
    EXPECT_EQ(analyser_.columns, 16);
}

TEST_F(AnalyserTest, GathersOnlyAbove1000RpmAndWhileItLogs) {
    analyser_.addValues(13.0F, 5, 1000.0F, 0.5F);
    EXPECT_EQ(analyser_.SampleCount[5], 0.0F);
    analyser_.addValues(13.0F, 5, 1001.0F, 0.5F);
    EXPECT_EQ(analyser_.SampleCount[5], 1.0F);
    analyser_.setLogData(false);
    analyser_.addValues(13.0F, 5, 5000.0F, 0.5F);
    EXPECT_EQ(analyser_.SampleCount[5], 1.0F);
}

// Readings 12 and 14: mean 13, variance (144 + 196) / 2 - 169 = 1, half above the target of 12.5.
TEST_F(AnalyserTest, KeepsMeanVarianceAndDifference) {
    analyser_.addValues(12.0F, 17, 1700.0F, 0.25F);
    analyser_.addValues(14.0F, 17, 1600.0F, 0.25F);
    EXPECT_EQ(analyser_.LambdaAvg(17), 13.0F);
    EXPECT_EQ(analyser_.SampleCount[17], 2.0F);
    EXPECT_EQ(analyser_.SquareSum[17], 340.0F);
    EXPECT_EQ(analyser_.Hajonta(17), 1.0F);
    EXPECT_EQ(analyser_.Proposal(17), 0.5F);
    // Column 1 stands for 1500: 200 and 100 above.
    EXPECT_EQ(analyser_.CellStats[17].RpmOffsetAvg, 150.0F);
    // 17 / 16 + 1 is a real division: 2.0625 * 0.1 = 0.20625; 0.25 - 0.20625 = 0.04375.
    EXPECT_NEAR(analyser_.CellStats[17].LoadOffsetAvg, 0.04375, 1e-6);
}

TEST_F(AnalyserTest, EngineSpeedBelowTheColumnCountsAsOnIt) {
    analyser_.addValues(12.5F, 17, 1500.0F, 0.2F);
    EXPECT_EQ(analyser_.CellStats[17].RpmOffsetAvg, 0.0F);
    analyser_.addValues(12.5F, 18, 1400.0F, 0.2F);
    EXPECT_EQ(analyser_.CellStats[18].RpmOffsetAvg, 0.0F);
    EXPECT_LT(analyser_.CellStats[0].LoadOffsetAvg + analyser_.CellStats[18].LoadOffsetAvg, 0.0F)
        << "load may be below";
}

// Cell 36 is row 1, column 16 of a large map; here it counts as column 4: 1000 + 4 * 500.
TEST_F(AnalyserTest, ColumnsAreThoseOfTheOrdinaryMapAlsoForALargeOne) {
    analyser_.setMapSize(320);
    analyser_.addValues(12.5F, 36, 3100.0F, 0.2F);
    EXPECT_EQ(analyser_.CellStats[36].RpmOffsetAvg, 100.0F);
    EXPECT_NEAR(analyser_.CellStats[36].LoadOffsetAvg, 0.2F - (36 / 16.0F + 1) * 0.1F, 1e-6F);
}

TEST_F(AnalyserTest, TheScaleMultipliesTheMeanAndNotTheSquares) {
    analyser_.LambdaScale = 2.0F;
    analyser_.addValues(7.0F, 3, 3000.0F, 0.2F);
    EXPECT_EQ(analyser_.LambdaAvg(3), 14.0F);
    EXPECT_EQ(analyser_.SquareSum[3], 49.0F);
    EXPECT_EQ(analyser_.Hajonta(3), 49.0F - 196.0F);
}

TEST_F(AnalyserTest, TheCellIsRoundedHalfToEven) {
    analyser_.addValues(12.0F, 4.5F, 3000.0F, 0.2F);
    EXPECT_EQ(analyser_.SampleCount[4], 1.0F);
    analyser_.addValues(12.0F, 5.5F, 3000.0F, 0.2F);
    EXPECT_EQ(analyser_.SampleCount[6], 1.0F);
}

TEST_F(AnalyserTest, Cell320IsTheLast) {
    analyser_.addValues(12.0F, 320, 3000.0F, 0.2F);
    EXPECT_EQ(analyser_.SampleCount[320], 1.0F);
    EXPECT_EQ(errorOf([&] { analyser_.addValues(12.0F, 321, 3000.0F, 0.2F); }), 9);
    EXPECT_EQ(errorOf([&] { analyser_.addValues(12.0F, -1, 3000.0F, 0.2F); }), 9);
    EXPECT_EQ(errorOf([&] { analyser_.Setpoint(12.0F, 321); }), 9);
}

TEST_F(AnalyserTest, WhatASingleCantHoldIsAnOverflow) {
    EXPECT_EQ(errorOf([&] { analyser_.addValues(3e38F, 5, 3000.0F, 0.2F); }), 6);
    EXPECT_EQ(analyser_.SquareSum[5], 0.0F) << "the square, which does not fit, is not stored";
    EXPECT_EQ(analyser_.SampleCount[5], 1.0F) << "what came before it is";
    EXPECT_EQ(errorOf([&] { analyser_.addValues(NAN, 6, 3000.0F, 0.2F); }), 6);
}

TEST_F(AnalyserTest, ClearingLeavesAllButMeansAndCounts) {
    analyser_.addValues(14.0F, 17, 1700.0F, 0.25F);
    analyser_.ClearTables();
    EXPECT_EQ(analyser_.LambdaAvg(17), 0.0F);
    EXPECT_EQ(analyser_.SampleCount[17], 0.0F);
    EXPECT_EQ(analyser_.SquareSum[17], 196.0F);
    EXPECT_EQ(analyser_.Hajonta(17), 0.0F);
    EXPECT_EQ(analyser_.Proposal(17), 1.5F);
    EXPECT_EQ(analyser_.CellStats[17].RpmOffsetAvg, 200.0F);
    // The sum of squares carries the old sample on: (196 + 169) / 1 - 169.
    analyser_.addValues(13.0F, 17, 1700.0F, 0.25F);
    EXPECT_EQ(analyser_.Hajonta(17), 196.0F);
}

TEST_F(AnalyserTest, ATargetIsShownOnItsCell) {
    analyser_.setMapWindow(&window_);
    analyser_.Setpoint(13.2F, 17);
    EXPECT_EQ(analyser_.Setpointget(17), 13.2F);
    EXPECT_THAT(window_.journal, ElementsAre("tip 17 13.2"));
    analyser_.setMapWindow(nullptr);
    analyser_.Setpoint(11.0F, 17);
    EXPECT_EQ(analyser_.Setpointget(17), 11.0F);
    EXPECT_EQ(window_.journal.size(), 1U);
}

}  // namespace
}  // namespace korvane::analysis
