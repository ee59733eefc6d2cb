#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live/readout/FrmMeter.h"
#include "support/VirtualProgram.h"

namespace korvane::live {
namespace {

struct FrmMeterTest : testing::Test, support::VirtualMachine {
    FrmMeterTest() { window.show(); }

    void ticks(int count) { pump.wait(count * 100); }
    [[nodiscard]] double value() const { return window.SarnMeter1.value(); }

    FrmMeter window{machine};
};

TEST_F(FrmMeterTest, ItsListHasThreeTypes) {
    ASSERT_EQ(window.Combo1.ListCount(), 3);
    EXPECT_EQ(window.Combo1.List(0), "Boost");
    EXPECT_EQ(window.Combo1.List(1), "Rpm");
    EXPECT_EQ(window.Combo1.List(2), "Throttle");
    EXPECT_EQ(window.Combo1.ListIndex, 0);
}

TEST_F(FrmMeterTest, TheDialStandsAtItsPlace) {
    EXPECT_EQ(window.SarnMeter1.Left, 100);
    EXPECT_EQ(window.SarnMeter1.Top, 300);
}

TEST_F(FrmMeterTest, TheListSetsTheDialsType) {
    EXPECT_EQ(window.SarnMeter1.Max, 3.0);
    window.Combo1.choose(1);
    EXPECT_EQ(window.SarnMeter1.MeterType(), 1);
    EXPECT_EQ(window.SarnMeter1.Max, 10000.0);
    window.Combo1.choose(2);
    EXPECT_EQ(window.SarnMeter1.MeterType(), 0);
    EXPECT_EQ(window.SarnMeter1.Max, 3.0);
}

TEST_F(FrmMeterTest, TheNeedleTakesAHundredthOfTheScaleEveryTenthOfASecond) {
    pump.wait(99);
    EXPECT_EQ(value(), 0);
    pump.wait(1);
    EXPECT_DOUBLE_EQ(value(), 0.03);
    window.Combo1.choose(1);
    EXPECT_EQ(value(), 0);
    ticks(10);
    EXPECT_EQ(value(), 1000);
    EXPECT_EQ(window.SarnMeter1.position(), 27);
}

TEST_F(FrmMeterTest, AtMaxTheNeedleGoesBackToMin) {
    window.Combo1.choose(1);
    ticks(99);
    EXPECT_EQ(value(), 9900);
    ticks(1);
    EXPECT_EQ(value(), 0);
    ticks(1);
    EXPECT_EQ(value(), 100);
}

// Below the dial are 725 twips, beside it 100 on each side, above it 300.
TEST_F(FrmMeterTest, ADragFitsTheDialToTheWindow) {
    window.resize(4200, 9000);
    EXPECT_EQ(window.SarnMeter1.Width, 4000);
    EXPECT_EQ(window.SarnMeter1.Height, 4000);
    window.resize(9000, 4025);
    EXPECT_EQ(window.SarnMeter1.Width, 3000);
    EXPECT_EQ(window.SarnMeter1.Left, 100);
    EXPECT_EQ(window.SarnMeter1.Top, 300);
    EXPECT_EQ(window.Width, 9000);
    EXPECT_GE(window.Combo1.Top, 3300);
    EXPECT_LE(window.Combo1.Top + window.Combo1.Height, 4025);
}

TEST_F(FrmMeterTest, ATinyWindowKeepsADial) {
    window.resize(0, 0);
    EXPECT_EQ(window.SarnMeter1.Width, 300);
}

}  // namespace
}  // namespace korvane::live
