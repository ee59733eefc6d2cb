#include <cmath>
#include <gmock/gmock.h>

#include "LiveBench.h"
#include "controls/ModelBench.h"
#include "live/SarnMeter.h"

namespace korvane::live {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

constexpr double kTolerance = 4e-9;  // the face's angles have ten digits or fewer, which moves a point by up to 3e-9
const double kHalfRoot2 = std::sqrt(0.5);

class SarnMeterTest : public controls::ModelBench {
protected:
    void ticks(int count) { pump_.runUntil(pump_.now() + count * 50 * platform::kMicrosPerMilli); }

    static void expectLine(const DialLine& line, double innerX, double innerY, double outerX, double outerY) {
        EXPECT_NEAR(line.inner.x, innerX, kTolerance);
        EXPECT_NEAR(line.inner.y, innerY, kTolerance);
        EXPECT_NEAR(line.outer.x, outerX, kTolerance);
        EXPECT_NEAR(line.outer.y, outerY, kTolerance);
    }

    SarnMeter meter_{window_, "SarnMeter1"};
};

TEST_F(SarnMeterTest, HasItsValuesAtCreation) {
    EXPECT_EQ(meter_.value(), 0);
    EXPECT_EQ(meter_.position(), 0);
    EXPECT_EQ(meter_.peakPosition(), 0);
    EXPECT_EQ(meter_.peakHold(), 0);
    EXPECT_EQ(meter_.Min.get(), 0);
    EXPECT_EQ(meter_.Max.get(), 100);
    EXPECT_EQ(meter_.MinPos.get(), 0);
    EXPECT_EQ(meter_.MaxPos.get(), 270);
    EXPECT_EQ(meter_.MeterType(), 0);
    EXPECT_EQ(meter_.ViisariLength.get(), 0.6);
    EXPECT_EQ(meter_.number(), "0");
}

// -90 degrees, which with y downwards is straight down.
TEST_F(SarnMeterTest, TheNeedleStartsStraightDown) {
    expectLine(meter_.needle(), 0.5, (1 + 0.17) / 2, 0.5, (1 + 0.6) / 2);
}

TEST_F(SarnMeterTest, TheNeedleTurnsClockwise) {
    meter_.setValue(100.0 / 3.0);  // 90 degrees on: to the left
    expectLine(meter_.needle(), (1 - 0.17) / 2, 0.5, (1 - 0.6) / 2, 0.5);
    meter_.setValue(50);  // 135: up and left
    expectLine(meter_.needle(), (1 - 0.17 * kHalfRoot2) / 2, (1 - 0.17 * kHalfRoot2) / 2, (1 - 0.6 * kHalfRoot2) / 2,
               (1 - 0.6 * kHalfRoot2) / 2);
    meter_.setValue(200.0 / 3.0);  // 180: up
    expectLine(meter_.needle(), 0.5, (1 - 0.17) / 2, 0.5, (1 - 0.6) / 2);
}

// Twice the missing digits of pi, 7.18e-9, times 0.6 / 2 of the control.
TEST_F(SarnMeterTest, PiHasEightDecimals) {
    meter_.setValue(100);
    EXPECT_NEAR(meter_.needle().outer.x, 0.8, kTolerance);
    EXPECT_NEAR(meter_.needle().outer.y - 0.5, -2.1538759e-9, 1e-13);
}

TEST_F(SarnMeterTest, ThePositionIsAShareOfMaxAlsoWithAnotherMin) {
    meter_.Min = 50;
    meter_.setValue(100);
    EXPECT_DOUBLE_EQ(meter_.position(), 135);
    meter_.setValue(60);
    EXPECT_DOUBLE_EQ(meter_.position(), 27);
}

TEST_F(SarnMeterTest, MinPosTurnsTheDial) {
    meter_.MinPos = 45;
    meter_.MaxPos = 225;
    meter_.setValue(50);  // position 90, angle -(90 + 90 - 45)
    EXPECT_DOUBLE_EQ(meter_.position(), 90);
    expectLine(meter_.needle(), (1 - 0.17 * kHalfRoot2) / 2, (1 + 0.17 * kHalfRoot2) / 2, (1 - 0.6 * kHalfRoot2) / 2,
               (1 + 0.6 * kHalfRoot2) / 2);
    EXPECT_NEAR(meter_.peakLine().outer.x, meter_.needle().outer.x, kTolerance);
    EXPECT_NEAR(meter_.peakLine().outer.y, meter_.needle().outer.y, kTolerance);
}

TEST_F(SarnMeterTest, TheNeedlesLengthIsAFractionOfTheRadius) {
    meter_.ViisariLength = 0.9;
    meter_.setValue(100.0 / 3.0);
    expectLine(meter_.needle(), (1 - 0.17) / 2, 0.5, (1 - 0.9) / 2, 0.5);
}

TEST_F(SarnMeterTest, AValueAboveMaxPinsTheNeedleAndTheNumber) {
    meter_.setValue(1000);
    EXPECT_EQ(meter_.value(), 100);
    EXPECT_DOUBLE_EQ(meter_.position(), 270);
    EXPECT_EQ(meter_.number(), "100");
}

TEST_F(SarnMeterTest, AValueBelowMinIsMin) {
    meter_.Min = 20;
    meter_.setValue(-5);
    EXPECT_EQ(meter_.value(), 20);
    EXPECT_EQ(meter_.position(), 0);
    EXPECT_EQ(meter_.number(), "20");
}

TEST_F(SarnMeterTest, TheNumberIsTheValueAsText) {
    meter_.setValue(12.75);
    EXPECT_EQ(meter_.number(), "12.75");
}

TEST_F(SarnMeterTest, TheSameValueTwiceRedrawsOnce) {
    const int before = meter_.redraws();
    meter_.setValue(40);
    meter_.setValue(40);
    EXPECT_EQ(meter_.redraws(), before + 1);
    meter_.setValue(1000);
    meter_.setValue(2000);
    EXPECT_EQ(meter_.redraws(), before + 2);
}

TEST_F(SarnMeterTest, AMaxOfZeroIsADivisionByZero) {
    meter_.Max = 0;
    try {
        meter_.setValue(0);
        FAIL();
    } catch (const platform::RuntimeError& error) {
        EXPECT_EQ(error.number(), 11);
    }
}

TEST_F(SarnMeterTest, ThePeakIsTheNeedlesWholeDegree) {
    meter_.Max = 16;
    meter_.MaxPos = 16;  // position = value
    meter_.setValue(2.75);
    EXPECT_EQ(meter_.peakPosition(), 3);
    meter_.setValue(7.25);
    EXPECT_EQ(meter_.peakPosition(), 7);
}

TEST_F(SarnMeterTest, ThePeakWaitsTenTicksAndThenFallsADegreeATick) {
    meter_.setValue(100);
    EXPECT_EQ(meter_.peakPosition(), 270);
    EXPECT_EQ(meter_.peakHold(), 10);
    meter_.setValue(0);
    EXPECT_EQ(meter_.peakPosition(), 270);
    for (int tick = 1; tick <= 10; ++tick) {
        ticks(1);
        EXPECT_EQ(meter_.peakPosition(), 270) << "tick " << tick;
        EXPECT_EQ(meter_.peakHold(), 10 - tick);
    }
    for (int tick = 11; tick <= 280; ++tick) {
        ticks(1);
        EXPECT_EQ(meter_.peakPosition(), 280 - tick);
    }
    ticks(100);
    EXPECT_EQ(meter_.peakPosition(), 0);
}

TEST_F(SarnMeterTest, ATickComesEvery50Milliseconds) {
    meter_.setValue(100);
    meter_.setValue(0);
    pump_.runUntil(550 * platform::kMicrosPerMilli - 1);
    EXPECT_EQ(meter_.peakPosition(), 270);
    pump_.runUntil(550 * platform::kMicrosPerMilli);
    EXPECT_EQ(meter_.peakPosition(), 269);
}

TEST_F(SarnMeterTest, ThePeakLineMovesWithThePeak) {
    meter_.setValue(100);
    meter_.setValue(0);
    ticks(10 + 90);  // at 180 degrees: up
    EXPECT_EQ(meter_.peakPosition(), 180);
    expectLine(meter_.peakLine(), 0.5, (1 - 0.17) / 2, 0.5, (1 - 0.6) / 2);
    expectLine(meter_.needle(), 0.5, (1 + 0.17) / 2, 0.5, (1 + 0.6) / 2);
}

TEST_F(SarnMeterTest, ThePeakMeetsTheNeedleAndStaysThere) {
    meter_.Max = 270;  // position = value
    meter_.setValue(200);
    meter_.setValue(100);
    ticks(10 + 100 + 50);
    EXPECT_EQ(meter_.peakPosition(), 100);
}

TEST_F(SarnMeterTest, WhileTheNeedleIsAtThePeakNothingCountsDown) {
    meter_.setValue(50);
    ticks(100);
    EXPECT_EQ(meter_.peakPosition(), 135);
    EXPECT_EQ(meter_.peakHold(), 10);
}

TEST_F(SarnMeterTest, ANewPeakWaitsAnew) {
    meter_.Max = 270;
    meter_.setValue(200);
    meter_.setValue(0);
    ticks(10 + 50);
    EXPECT_EQ(meter_.peakPosition(), 150);
    EXPECT_EQ(meter_.peakHold(), 0);
    meter_.setValue(150);
    EXPECT_EQ(meter_.peakHold(), 10) << "a needle that reaches the marker counts as a peak";
    meter_.setValue(160);
    meter_.setValue(0);
    ticks(10);
    EXPECT_EQ(meter_.peakPosition(), 160);
    ticks(1);
    EXPECT_EQ(meter_.peakPosition(), 159);
}

TEST_F(SarnMeterTest, ARiseBelowThePeakLeavesThePeakFalling) {
    meter_.Max = 270;
    meter_.setValue(200);
    meter_.setValue(0);
    ticks(5);
    meter_.setValue(50);
    ticks(5);
    EXPECT_EQ(meter_.peakHold(), 0);
    EXPECT_EQ(meter_.peakPosition(), 200);
}

TEST_F(SarnMeterTest, TheTypesHaveTheirRanges) {
    meter_.setMeterType(1);
    EXPECT_EQ(meter_.MeterType(), 1);
    EXPECT_EQ(meter_.Min.get(), 0);
    EXPECT_EQ(meter_.Max.get(), 10000);
    EXPECT_EQ(meter_.MinPos.get(), 0);
    EXPECT_EQ(meter_.MaxPos.get(), 270);
    meter_.setMeterType(0);
    EXPECT_EQ(meter_.MeterType(), 0);
    EXPECT_EQ(meter_.Max.get(), 3);
}

TEST_F(SarnMeterTest, AnyOtherTypeBehavesAs0) {
    for (const int type : {2, -1, 99}) {
        meter_.setMeterType(1);
        meter_.setMeterType(type);
        EXPECT_EQ(meter_.MeterType(), 0);
        EXPECT_EQ(meter_.Max.get(), 3);
    }
}

TEST_F(SarnMeterTest, ANewTypeResetsValueAndPeakAndRedraws) {
    meter_.MinPos = 10;
    meter_.setValue(80);
    const int before = meter_.redraws();
    meter_.setMeterType(1);
    EXPECT_EQ(meter_.value(), 0);
    EXPECT_EQ(meter_.position(), 0);
    EXPECT_EQ(meter_.peakPosition(), 0);
    EXPECT_EQ(meter_.number(), "0");
    EXPECT_GT(meter_.redraws(), before);
    expectLine(meter_.needle(), 0.5, (1 + 0.17) / 2, 0.5, (1 + 0.6) / 2);
    expectLine(meter_.peakLine(), 0.5, (1 + 0.17) / 2, 0.5, (1 + 0.6) / 2);
}

TEST_F(SarnMeterTest, ResizingKeepsItSquareAndRedraws) {
    const int before = meter_.redraws();
    meter_.Width = 2400;
    EXPECT_EQ(meter_.Width.get(), 2400);
    EXPECT_EQ(meter_.Height.get(), 2400);
    EXPECT_GT(meter_.redraws(), before);
}

TEST_F(SarnMeterTest, ABagWithoutValuesReadsAsTheStoredDefaults) {
    meter_.readProperties({});
    EXPECT_EQ(meter_.Min.get(), 0);
    EXPECT_EQ(meter_.Max.get(), 100);
    EXPECT_EQ(meter_.MinPos.get(), 0);
    EXPECT_EQ(meter_.MaxPos.get(), 270);
    EXPECT_EQ(meter_.MeterType(), 0);
    EXPECT_EQ(meter_.value(), 0);
    EXPECT_EQ(meter_.ViisariLength.get(), 0.7);
}

TEST_F(SarnMeterTest, WhatIsAtItsDefaultIsNotStored) {
    EXPECT_THAT(meter_.writeProperties(), UnorderedElementsAre(Pair("ViisariLength", 0.6)));
    meter_.ViisariLength = 0.8;
    EXPECT_TRUE(meter_.writeProperties().empty());
    meter_.ViisariLength = 0.7;
    EXPECT_THAT(meter_.writeProperties(), UnorderedElementsAre(Pair("ViisariLength", 0.7)));
}

TEST_F(SarnMeterTest, AValueEqualToMinIsNotStored) {
    meter_.ViisariLength = 0.8;
    meter_.Min = 20;
    meter_.setValue(20);
    EXPECT_THAT(meter_.writeProperties(), UnorderedElementsAre(Pair("Min", 20)));
}

TEST_F(SarnMeterTest, WhatIsStoredComesBack) {
    meter_.Min = 10;
    meter_.Max = 200;
    meter_.MinPos = 20;
    meter_.MaxPos = 200;
    meter_.setValue(50);
    const auto bag = meter_.writeProperties();
    SarnMeter other(window_, "SarnMeter2");
    other.readProperties(bag);
    EXPECT_EQ(other.Min.get(), 10);
    EXPECT_EQ(other.Max.get(), 200);
    EXPECT_EQ(other.MinPos.get(), 20);
    EXPECT_EQ(other.MaxPos.get(), 200);
    EXPECT_EQ(other.value(), 50);
    EXPECT_EQ(other.ViisariLength.get(), 0.6);
}

TEST_F(SarnMeterTest, IsReachedByName) {
    const auto* value = meter_.findProperty("value");
    ASSERT_NE(value, nullptr);
    value->set(meter_, controls::Value(12.5));
    EXPECT_EQ(meter_.value(), 12.5);
    EXPECT_EQ(value->get(meter_), controls::Value(12.5));
    meter_.findProperty("MeterType")->set(meter_, controls::Value(std::int64_t{1}));
    EXPECT_EQ(meter_.Max.get(), 10000);
    EXPECT_THROW(value->set(meter_, controls::Value(std::string("x"))), platform::RuntimeError);
}

}  // namespace
}  // namespace korvane::live
