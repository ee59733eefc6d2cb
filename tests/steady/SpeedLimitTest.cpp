#include <gtest/gtest.h>

#include "analysis/steady/SpeedLimit.h"

namespace korvane::steady {
namespace {

MapBytes mapOf(std::uint8_t byte) {
    MapBytes map;
    map.fill(byte);
    return map;
}

TEST(SpeedLimit, LetsACellMoveByThreePerCentUntilTheNextProof) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(200));
    EXPECT_TRUE(limit.allows(7, 206));
    EXPECT_FALSE(limit.allows(7, 207));
    limit.spend(7, 200, 206);
    EXPECT_FALSE(limit.allows(7, 207));
    limit.proved(mapOf(206));
    EXPECT_TRUE(limit.allows(7, 212));
    EXPECT_FALSE(limit.allows(7, 213));
}

TEST(SpeedLimit, CountsAWayThereAndBackAsOneStretch) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(200));
    limit.spend(7, 200, 204);
    EXPECT_TRUE(limit.allows(7, 199));   // 199 to 204: 5 of 199
    EXPECT_FALSE(limit.allows(7, 198));  // 198 to 204: 6 of 198
}

TEST(SpeedLimit, AlwaysAllowsACountOfASmallByte) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(20));
    EXPECT_TRUE(limit.allows(7, 21));
    EXPECT_FALSE(limit.allows(7, 22));
    limit.spend(7, 20, 21);
    EXPECT_FALSE(limit.allows(7, 19));
}

TEST(SpeedLimit, GivesFiveCountsASecond) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(200));
    int spent = 0;
    for (int frame = 1; frame <= 100; ++frame) {
        limit.pass(0.1 * frame, mapOf(200));
        while (limit.ready()) {
            limit.spend(7, 200, 201);
            ++spent;
        }
    }
    EXPECT_NEAR(spent, 50, 1);
}

TEST(SpeedLimit, RemembersTheMapOfAMinuteAgo) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(0));
    for (int second = 1; second <= 200; ++second) {
        limit.pass(second, mapOf(static_cast<std::uint8_t>(second)));
    }
    EXPECT_LE(limit.minuteAgo()[0], 140);
    EXPECT_GE(limit.minuteAgo()[0], 130);
}

TEST(SpeedLimit, TakesTheTunersByteForWhereTheCellStands) {
    SpeedLimit limit;
    limit.reset(0.0, mapOf(200));
    limit.settle(7, 100);
    EXPECT_TRUE(limit.allows(7, 103));
    EXPECT_FALSE(limit.allows(7, 104));
    EXPECT_EQ(limit.minuteAgo()[7], 100);
    EXPECT_EQ(limit.atProof()[7], 100);
}

}  // namespace
}  // namespace korvane::steady
