#include <gtest/gtest.h>

#include "analysis/steady/Authority.h"

namespace korvane::steady {
namespace {

TEST(Authority, IsWholeCountsWithinThePercentages) {
    const SteadySetup setup;  // 15 richer, 5 leaner
    EXPECT_EQ(authorityOf(setup, 100), (ByteRange{95, 115}));
    EXPECT_EQ(authorityOf(setup, 110), (ByteRange{105, 126}));  // 5.5 and 16.5
    EXPECT_EQ(authorityOf(setup, 19), (ByteRange{19, 21}));     // 0.95 and 2.85
    EXPECT_EQ(authorityOf(setup, 0), (ByteRange{0, 0}));
}

TEST(Authority, EndsAtTheStopsOfTheKeys) {
    SteadySetup setup;
    setup.highest = 250;
    setup.lowest = 98;
    EXPECT_EQ(authorityOf(setup, 240), (ByteRange{228, 250}));
    EXPECT_EQ(authorityOf(setup, 100), (ByteRange{98, 115}));
    EXPECT_EQ(authorityOf(setup, 255), (ByteRange{243, 255})) << "the baseline is always allowed";
}

TEST(Authority, NeverGivesAPartOfACount) {
    SteadySetup setup;
    for (int percent = 0; percent <= 30; ++percent) {
        setup.richAuthority = percent;
        setup.leanAuthority = percent;
        for (int byte = 0; byte <= 255; ++byte) {
            const ByteRange range = authorityOf(setup, static_cast<std::uint8_t>(byte));
            EXPECT_LE((range.most - byte) * 100, byte * percent);
            EXPECT_LE((byte - range.least) * 100, byte * percent);
        }
    }
}

}  // namespace
}  // namespace korvane::steady
