#include <gtest/gtest.h>

#include "core/TimeText.h"

namespace korvane::core {
namespace {

constexpr platform::WallTime kMorning{2026, 11, 5, 6, 51, 9};

TEST(TimeText, CaptionsShowTheTimeWithColons) {
    EXPECT_EQ(timeText(kMorning), "06:51:09");
}

TEST(TimeText, FileNamesHoldNoColons) {
    EXPECT_EQ(dateText(kMorning), "2026-11-05");
    EXPECT_EQ(dateStamp(kMorning), "261105");
    EXPECT_EQ(hourMinuteStamp(kMorning), "_0651");
    EXPECT_EQ(hourMinuteFileText(kMorning), "06_51");
    EXPECT_EQ(timeFileText(kMorning), "06_51_09");
}

TEST(TimeText, AYearIsItsLastTwoDigits) {
    EXPECT_EQ(dateStamp({2100, 1, 31, 0, 0, 0}), "000131");
}

}  // namespace
}  // namespace korvane::core
