#include <gtest/gtest.h>

#include "platform/WallTime.h"

namespace korvane::platform {
namespace {

constexpr std::int64_t kDay = 86400;

TEST(WallTime, CountsFromTheFirstOfJanuary1970) {
    EXPECT_EQ(secondsOf({1970, 1, 1, 0, 0, 0}), 0);
    EXPECT_EQ(secondsOf({1970, 1, 2, 1, 2, 3}), kDay + 3723);
    EXPECT_EQ(secondsOf({1969, 12, 31, 23, 59, 59}), -1);
}

TEST(WallTime, KnowsDaysOfTheCalendar) {
    // 30 years with the leap days of 1972 to 1996.
    EXPECT_EQ(secondsOf({2000, 1, 1, 0, 0, 0}), (30 * 365 + 7) * kDay);
    // 26 more with those of 2000 to 2024, and noon of the fifth.
    EXPECT_EQ(secondsOf({2026, 1, 5, 12, 0, 0}), (30 * 365 + 7 + 26 * 365 + 7 + 4) * kDay + kDay / 2);
}

TEST(WallTime, LeapYearsFollowTheirRule) {
    EXPECT_EQ(secondsOf({2024, 3, 1, 0, 0, 0}) - secondsOf({2024, 2, 28, 0, 0, 0}), 2 * kDay);
    EXPECT_EQ(secondsOf({2023, 3, 1, 0, 0, 0}) - secondsOf({2023, 2, 28, 0, 0, 0}), kDay);
    EXPECT_EQ(secondsOf({2000, 3, 1, 0, 0, 0}) - secondsOf({2000, 2, 28, 0, 0, 0}), 2 * kDay);
    EXPECT_EQ(secondsOf({2100, 3, 1, 0, 0, 0}) - secondsOf({2100, 2, 28, 0, 0, 0}), kDay);
}

TEST(WallTime, SecondsTurnBackIntoTheirMoment) {
    EXPECT_EQ(wallTimeOf(0), (WallTime{1970, 1, 1, 0, 0, 0}));
    EXPECT_EQ(wallTimeOf(-1), (WallTime{1969, 12, 31, 23, 59, 59}));
    EXPECT_EQ(wallTimeOf((30 * 365 + 7) * kDay - 1), (WallTime{1999, 12, 31, 23, 59, 59}));
    EXPECT_EQ(wallTimeOf(59 * kDay), (WallTime{1970, 3, 1, 0, 0, 0}));
}

TEST(WallTime, EveryDayOfFourCenturiesFollowsTheOneBefore) {
    WallTime before = wallTimeOf(-kDay);
    for (std::int64_t day = 0; day < 146097; ++day) {
        const WallTime time = wallTimeOf(day * kDay);
        ASSERT_EQ(secondsOf(time), day * kDay);
        ASSERT_LT(before, time);
        ASSERT_TRUE(time.day == before.day + 1 || time.day == 1);
        before = time;
    }
}

}  // namespace
}  // namespace korvane::platform
