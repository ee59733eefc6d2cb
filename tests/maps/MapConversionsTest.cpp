#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "maps/grid/MapConversions.h"
#include "platform/RuntimeError.h"
#include "support/ErrorOf.h"
#include "support/MemoryPreferences.h"

namespace korvane::maps {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

using support::errorOf;

struct Scales : testing::Test {
    Scales() {
        core::InitModule(tables, support::MemoryPreferences());
        core::InitTimeUnits(tables);
    }
    void set(std::int32_t mode, std::int32_t multiplier) {
        value(tables.addresses.INJ_MODE_OFFSET) = mode;
        value(tables.addresses.INJ_MULTIPLIER_OFF) = multiplier;
    }
    core::ParameterValue& value(int address) { return core::checked(tables.EEParams, address).value; }
    [[nodiscard]] double mode() const { return core::parameterNumber(tables, tables.addresses.INJ_MODE_OFFSET); }

    core::SharedTables tables;
};

TEST_F(Scales, AParameterOfAnyKindIsANumber) {
    auto& entry = value(7);
    entry = std::monostate();
    EXPECT_EQ(core::parameterNumber(tables, 7), 0.0);
    entry = std::uint8_t{200};
    EXPECT_EQ(core::parameterNumber(tables, 7), 200.0);
    entry = std::int32_t{-70000};
    EXPECT_EQ(core::parameterNumber(tables, 7), -70000.0);
    entry = 2.5F;
    EXPECT_EQ(core::parameterNumber(tables, 7), 2.5);
    EXPECT_EQ(errorOf([&] { return core::parameterNumber(tables, -1); }), 9);
}

TEST_F(Scales, OrdinaryModeTwoGoesByTheMultiplier) {
    set(2, 3);
    EXPECT_EQ(ordinaryInjectionScale(tables), tables.TickC);
    for (const int multiplier : {0, 1, 2, 4, 5, 6}) {
        set(2, multiplier);
        EXPECT_EQ(ordinaryInjectionScale(tables), tables.TickB) << multiplier;
    }
    EXPECT_EQ(mode(), 2.0);
}

TEST_F(Scales, OrdinaryModeOneNeedsNoMultiplier) {
    set(1, 3);
    EXPECT_EQ(ordinaryInjectionScale(tables), tables.TickA);
    EXPECT_EQ(mode(), 1.0);
}

TEST_F(Scales, LargeModesOneAndTwoGoByTheMultiplier) {
    for (const int mode : {1, 2}) {
        set(mode, 6);
        EXPECT_EQ(largeInjectionScale(tables), tables.TickC + tables.TickC);
        set(mode, 5);
        EXPECT_EQ(largeInjectionScale(tables), tables.TickB + tables.TickC);
        set(mode, 4);
        EXPECT_EQ(largeInjectionScale(tables), tables.TickB + tables.TickB);
        set(mode, 3);
        EXPECT_EQ(largeInjectionScale(tables), tables.TickC);
        for (const int multiplier : {0, 1, 2, 7}) {
            set(mode, multiplier);
            EXPECT_EQ(largeInjectionScale(tables), tables.TickB);
        }
    }
}

TEST_F(Scales, WithoutAChangeTheyAreThoseOfTheFirstPass) {
    for (const int modeByte : {1, 2, 3, 4, 7}) {
        for (const int multiplier : {2, 3, 4, 5, 6}) {
            set(modeByte, multiplier);
            const double ordinary = ordinaryScaleNow(tables);
            const double large = largeScaleNow(tables);
            EXPECT_EQ(mode(), modeByte);
            EXPECT_EQ(ordinary, ordinaryInjectionScale(tables)) << modeByte << ' ' << multiplier;
            set(modeByte, multiplier);
            EXPECT_EQ(large, largeInjectionScale(tables)) << modeByte << ' ' << multiplier;
        }
    }
}

TEST_F(Scales, ModeFourStaysAndAModeThatIsNoneBecomesTwoForTheNextPass) {
    for (const auto scale : {&ordinaryInjectionScale, &largeInjectionScale}) {
        set(4, 3);
        EXPECT_EQ(scale(tables), tables.TickD);
        EXPECT_EQ(mode(), 4.0);

        set(3, 3);
        EXPECT_EQ(scale(tables), tables.TickD);
        EXPECT_EQ(mode(), 2.0);
        EXPECT_EQ(scale(tables), tables.TickC);

        value(tables.addresses.INJ_MODE_OFFSET) = std::monostate();
        EXPECT_EQ(scale(tables), tables.TickD);
        EXPECT_EQ(mode(), 2.0);
    }
}

TEST(CycleTime, IsTwoTurnsOfTheCrank) {
    EXPECT_DOUBLE_EQ(cycleTime(1000), 120.0);
    EXPECT_DOUBLE_EQ(cycleTime(6000), 20.0);
}

constexpr float kSeventySecond = 1.0F / 72.0F;
constexpr float kTwentyFourth = 1.0F / 24.0F;
constexpr double kUnit = 1.0 / 288.0;

FuelModel inTime(double offset, float scale) {
    return {false, offset, scale, kUnit};
}

FuelModel inCounts(double offset, float scale) {
    return {true, offset, scale, kUnit};
}

TEST(FuelTime, IsCountsTimesScaleCutToThousandths) {
    EXPECT_EQ(fuelTime(36, inTime(0, kTwentyFourth)), 1.5);
    EXPECT_EQ(fuelTime(0, inTime(0, kTwentyFourth)), 0.0);
    EXPECT_EQ(fuelTime(1, inTime(0, kSeventySecond)), 0.013);  // 0.01388
    EXPECT_EQ(fuelTime(2, inTime(0, kSeventySecond)), 0.027);  // 0.02777
    EXPECT_EQ(fuelTime(255, inTime(0, kTwentyFourth)), 10.625);
}

TEST(FuelTime, AnOffsetInTimeIsAddedToTheTime) {
    EXPECT_EQ(fuelTime(0, inTime(10, kSeventySecond)), 0.034);     // 10 / 288 = 0.03472
    EXPECT_EQ(fuelTime(72, inTime(72, kSeventySecond)), 1.25);     // 1 + 0.25
    EXPECT_EQ(fuelTime(0, inTime(-5, kSeventySecond)), -0.018);    // -0.01736
    EXPECT_EQ(fuelTime(255, inTime(288, kTwentyFourth)), 11.625);  // no stop at 255 counts
}

TEST(FuelTime, TheTextOfTheSingleCounts) {
    // 0.1111111 + 0.01388889 is a little less than 0.125, whose seven digits it has.
    EXPECT_EQ(fuelTime(8, inTime(4, kSeventySecond)), 0.125);
}

TEST(FuelTime, AnOffsetInCountsStopsAt255Counts) {
    EXPECT_EQ(fuelTime(250, inCounts(10, kTwentyFourth)), 10.625);  // 255 / 24
    EXPECT_EQ(fuelTime(245, inCounts(10, kTwentyFourth)), 10.625);
    EXPECT_EQ(fuelTime(244, inCounts(10, kTwentyFourth)), 10.583);  // 254 / 24 = 10.58333
    EXPECT_EQ(fuelTime(0, inCounts(36, kTwentyFourth)), 1.5);
    EXPECT_EQ(fuelTime(0, inCounts(0, kTwentyFourth)), 0.0);
    EXPECT_EQ(fuelTime(0, inCounts(-1, kSeventySecond)), -0.014);
    EXPECT_EQ(fuelTime(3, inCounts(1e300, kTwentyFourth)), 10.625);
}

TEST(FuelTime, AnAbsurdOffsetOverflows) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    EXPECT_EQ(errorOf([] { return fuelTime(1, inTime(1e300, kTwentyFourth)); }), 6);
    EXPECT_EQ(errorOf([] { return fuelTime(1, inTime(-kLargest, kTwentyFourth)); }), 6);
    EXPECT_EQ(errorOf([] { return fuelTime(1, inCounts(-kLargest, kTwentyFourth)); }), 6);
}

TEST(AsShown, IsTheNumberOfTheText) {
    for (float value = 1e-7F; value < 1e9F; value *= 1.0371F) {
        EXPECT_EQ(asShown(value), core::val(core::numberText(value).view())) << value;
        EXPECT_EQ(asShown(-value), -asShown(value)) << value;
    }
    EXPECT_EQ(asShown(0.0F), 0.0);
    EXPECT_EQ(asShown(0.1F), 0.1);
    EXPECT_EQ(errorOf([] { return asShown(std::numeric_limits<float>::infinity()); }), 6);
}

TEST(IgnitionDegrees, AreSteppedByAFifth) {
    EXPECT_EQ(ignitionDegrees(0), 0.0);
    EXPECT_EQ(ignitionDegrees(1), 0.2);
    EXPECT_EQ(ignitionDegrees(128), 25.6);
    EXPECT_EQ(ignitionDegrees(255), 51.0);
}

TEST(PwmTime, IsCutToThousandths) {
    constexpr double kTick = 1.0 / 72.0;
    EXPECT_EQ(pwmTime(0, kTick), 0.0);
    EXPECT_EQ(pwmTime(1, kTick), 0.013);
    EXPECT_EQ(pwmTime(72, kTick), 1.0);
    EXPECT_EQ(pwmTime(255, kTick), 3.541);  // 3.54166
}

TEST(CalcPower, IsCutToOneDecimal) {
    EXPECT_EQ(CalcPower(550, 10, 20), 174.4);  // 52.33111 * 0.5 / 0.6 * 4 = 174.437
    EXPECT_EQ(CalcPower(450, 1.5, 30), 14.2);  // 42.81637 * 0.05 / 0.6 * 4 = 14.272
    EXPECT_EQ(CalcPower(550, 0, 20), 0.0);
    EXPECT_EQ(CalcPower(0, 10, 20), 0.0);
}

TEST(CalcPower, IsEmptyWhereItIsNoNumber) {
    EXPECT_FALSE(CalcPower(550, 10, 0));
    EXPECT_FALSE(CalcPower(550, 0, 0));
    EXPECT_FALSE(CalcPower(550, 10, kInfinity));
    EXPECT_FALSE(CalcPower(1e308, 1e10, 1));
    EXPECT_FALSE(CalcPower(std::nan(""), 10, 20));
}

}  // namespace
}  // namespace korvane::maps
