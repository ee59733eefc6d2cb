#include <gtest/gtest.h>
#include <limits>

#include "performance/RoadSpeed.h"
#include "support/ErrorOf.h"

namespace korvane::performance {
namespace {

using support::errorOf;

// A wheel of one metre that turns with the engine: 6000 rpm are 360000 turns an hour, of 3.1415 m each.
TEST(RoadSpeed, IsTheWayOfTheTyreInAnHour) {
    EXPECT_NEAR(roadSpeed(6000, {1.0, 1.0, 100.0}), 1130.94, 1e-9);
}

// 2500 / 10 * 6 = 1500; 15000 / (2.235 * 3.4) = 1973.94; 56.6 * 1973.94 * 3.1415 / 10000 = 35.098. Likewise
// 56.6 * 5132.25 * 3.1415 / 10000 = 91.256.
TEST(RoadSpeed, FollowsGearAndFinalDrive) {
    EXPECT_NEAR(roadSpeed(2500, {2.235, 3.4, 56.6}), 35.098, 0.0005);
    EXPECT_NEAR(roadSpeed(6500, {2.235, 3.4, 56.6}), 91.256, 0.0005);
    EXPECT_NEAR(roadSpeed(0, {2.235, 3.4, 56.6}), 0.0, 1e-12);
}

TEST(RoadSpeed, ARatioOfZeroIsADivisionByZero) {
    EXPECT_EQ(errorOf([] { static_cast<void>(roadSpeed(2500, {0.0, 3.4, 56.6})); }), 11);
    EXPECT_EQ(errorOf([] { static_cast<void>(roadSpeed(0, {2.235, 0.0, 56.6})); }), 11);
}

TEST(RoadSpeed, WhatNoNumberCanHoldIsAnOverflow) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    EXPECT_EQ(errorOf([] { static_cast<void>(roadSpeed(2500, {1.0, 1.0, kLargest})); }), 6);
    EXPECT_EQ(errorOf([] { static_cast<void>(roadSpeed(2500, {kLargest, kLargest, 56.6})); }), 6);
    EXPECT_EQ(errorOf([] { static_cast<void>(roadSpeed(2500, {1e-200, 1e-108, 56.6})); }), 6);
    EXPECT_EQ(errorOf([] { static_cast<void>(shownSpeed(kLargest)); }), 6);
}

TEST(RoadSpeed, IsShownCutToOneDecimal) {
    EXPECT_EQ(shownSpeed(35.098), 35.0);
    EXPECT_EQ(shownSpeed(91.29), 91.2);
    EXPECT_EQ(shownSpeed(0.0), 0.0);
    EXPECT_EQ(shownSpeed(-0.05), -0.1) << "the integer part is the one below";
}

}  // namespace
}  // namespace korvane::performance
