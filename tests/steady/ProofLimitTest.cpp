#include <gtest/gtest.h>

#include "analysis/steady/ProofLimit.h"

namespace korvane::steady {
namespace {

MapBytes mapOf(std::uint8_t byte) {
    MapBytes map;
    map.fill(byte);
    return map;
}

ProofLimit limitAt(std::uint8_t byte) {
    ProofLimit limit;
    limit.proved(mapOf(byte));
    return limit;
}

TEST(ProofLimit, LetsACellMoveByThreePerCentUntilTheNextProof) {
    ProofLimit limit = limitAt(200);
    EXPECT_TRUE(limit.allows(7, 206));
    EXPECT_FALSE(limit.allows(7, 207));
    limit.spend(7, 206);
    EXPECT_FALSE(limit.allows(7, 207));
    limit.proved(mapOf(206));
    EXPECT_TRUE(limit.allows(7, 212));
    EXPECT_FALSE(limit.allows(7, 213));
}

TEST(ProofLimit, CountsAWayThereAndBackAsOneStretch) {
    ProofLimit limit = limitAt(200);
    limit.spend(7, 204);
    EXPECT_TRUE(limit.allows(7, 199));   // 199 to 204: 5 of 199
    EXPECT_FALSE(limit.allows(7, 198));  // 198 to 204: 6 of 198
}

TEST(ProofLimit, AlwaysAllowsACountOfASmallByte) {
    ProofLimit limit = limitAt(20);
    EXPECT_TRUE(limit.allows(7, 21));
    EXPECT_FALSE(limit.allows(7, 22));
    limit.spend(7, 21);
    EXPECT_FALSE(limit.allows(7, 19));
}

TEST(ProofLimit, TakesTheTunersByteForWhereTheCellStands) {
    ProofLimit limit = limitAt(200);
    limit.settle(7, 100);
    EXPECT_TRUE(limit.allows(7, 103));
    EXPECT_FALSE(limit.allows(7, 104));
    EXPECT_EQ(limit.atProof()[7], 100);
}

}  // namespace
}  // namespace korvane::steady
