// What is kept of each second, and what a line can carry.
#include <gtest/gtest.h>

#include "link/LinkHistory.h"

namespace korvane::link {
namespace {

TEST(PollLimitsTest, AreThoseOfTheIntervalAndOfTenBitsAByte) {
    // A poll of 1 byte and an answer of 22: 23 bytes, 230 bits.
    const auto limits = pollLimits(57600, 200, 22);
    EXPECT_DOUBLE_EQ(limits.asked, 5.0);
    EXPECT_NEAR(limits.carried, 250.43, 0.01);
    EXPECT_NEAR(pollLimits(9600, 10, 22).carried, 41.74, 0.01);
    EXPECT_DOUBLE_EQ(pollLimits(9600, 10, 22).asked, 100.0);
}

TEST(PollLimitsTest, AnIntervalOfZeroAndAnUnknownSpeedAreNoDivisionByZero) {
    EXPECT_DOUBLE_EQ(pollLimits(0, 0, 0).asked, 1000.0);
    EXPECT_DOUBLE_EQ(pollLimits(0, 0, 0).carried, 0.0);
}

}  // namespace
}  // namespace korvane::link
