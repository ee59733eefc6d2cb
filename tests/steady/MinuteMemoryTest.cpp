#include <gtest/gtest.h>

#include "analysis/steady/MinuteMemory.h"

namespace korvane::steady {
namespace {

MapBytes mapOf(std::uint8_t byte) {
    MapBytes map;
    map.fill(byte);
    return map;
}

TEST(MinuteMemory, HasTheMapOfAMinuteAgo) {
    MinuteMemory memory;
    memory.reset(0.0, mapOf(0));
    for (int second = 1; second <= 200; ++second) {
        memory.pass(second, mapOf(static_cast<std::uint8_t>(second)));
    }
    EXPECT_LE(memory.minuteAgo()[0], 140);
    EXPECT_GE(memory.minuteAgo()[0], 130);
}

TEST(MinuteMemory, HasTheMapOfTheStartInTheFirstMinute) {
    MinuteMemory memory;
    memory.reset(100.0, mapOf(7));
    for (int second = 101; second < 160; ++second) {
        memory.pass(second, mapOf(9));
    }
    EXPECT_EQ(memory.minuteAgo()[3], 7);
}

TEST(MinuteMemory, TakesAByteForOneThatHasAlwaysBeenThere) {
    MinuteMemory memory;
    memory.reset(0.0, mapOf(200));
    memory.settle(7, 100);
    EXPECT_EQ(memory.minuteAgo()[7], 100);
    EXPECT_EQ(memory.minuteAgo()[8], 200);
}

}  // namespace
}  // namespace korvane::steady
