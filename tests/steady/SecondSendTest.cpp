#include <gtest/gtest.h>

#include "analysis/steady/SecondSend.h"

namespace korvane::steady {
namespace {

TEST(SecondSend, IsDueSomeSecondsAfterTheChange) {
    SecondSend again;
    EXPECT_FALSE(again.isDue(7, 1e6));
    again.changed(7, 10.0);
    EXPECT_FALSE(again.isDue(7, 13.9));
    EXPECT_TRUE(again.isDue(7, 14.0));
    EXPECT_FALSE(again.isDue(8, 14.0));
}

TEST(SecondSend, CountsFromTheLastChange) {
    SecondSend again;
    again.changed(7, 10.0);
    again.changed(7, 13.0);
    EXPECT_FALSE(again.isDue(7, 16.9));
    EXPECT_TRUE(again.isDue(7, 17.0));
}

TEST(SecondSend, IsNotDueTwice) {
    SecondSend again;
    again.changed(7, 10.0);
    again.drop(7);
    EXPECT_FALSE(again.isWaiting(7));
    EXPECT_FALSE(again.isDue(7, 1e6));
}

}  // namespace
}  // namespace korvane::steady
