#include <cmath>
#include <gtest/gtest.h>

#include "analysis/steady/PulseCheck.h"

namespace korvane::steady {
namespace {

constexpr double kDuty = 100.0;  // counts; one is 1 per cent

TEST(PulseCheck, TakesWhatIsWithinFivePerCent) {
    PulseCheck check;
    EXPECT_TRUE(check.fits(0.0, 0.045, kDuty));
    EXPECT_TRUE(check.fits(0.1, -0.045, kDuty));
}

TEST(PulseCheck, SeesMoreFuelAndLess) {
    for (const double off : {0.07, -0.07}) {
        PulseCheck check;
        EXPECT_FALSE(check.fits(0.0, off, kDuty)) << off;
    }
}

TEST(PulseCheck, AllowsForTheCountOfAShortPulse) {
    // Of 10 counts one is 10 per cent.
    PulseCheck check;
    EXPECT_TRUE(check.fits(0.0, 0.14, 10.0));
    EXPECT_FALSE(check.fits(0.1, 0.16, 10.0));
}

TEST(PulseCheck, FollowsAnEnrichmentDownToItsEnd) {
    PulseCheck check;
    double fitsFrom = 0.0;
    for (int frame = 0; frame < 200 && fitsFrom == 0.0; ++frame) {
        const double now = 0.05 * frame;
        const double off = 0.2 * std::exp(-now / 0.8);
        if (check.fits(now, off, kDuty)) {
            fitsFrom = off;
        }
    }
    EXPECT_GT(fitsFrom, 0.0);
    EXPECT_LE(fitsFrom, 0.02);
}

TEST(PulseCheck, DoesNotWaitForEverForASmallDifference) {
    PulseCheck check;
    EXPECT_FALSE(check.fits(0.0, 0.1, kDuty));
    EXPECT_FALSE(check.fits(3.0, 0.03, kDuty));
    EXPECT_TRUE(check.fits(4.1, 0.03, kDuty));
}

// 4 per cent fade with 0.8 s: below 1.5 per cent after 0.8 s, and the mean of 0.3 s somewhat later. Without the
// throttle nothing would be seen of it.
TEST(PulseCheck, BehindAnOpenedThrottleASmallEnrichmentIsSeenAsWell) {
    PulseCheck unwarned;
    PulseCheck check;
    double fitsFrom = -1.0;
    ASSERT_TRUE(check.fits(-0.05, 0.0, kDuty));
    check.expect(0.0);
    for (int frame = 1; frame < 60 && fitsFrom < 0.0; ++frame) {
        const double now = 0.05 * frame;
        const double off = 0.04 * std::exp(-now / 0.8);
        EXPECT_TRUE(unwarned.fits(now, off, kDuty));
        fitsFrom = check.fits(now, off, kDuty) ? now : fitsFrom;
    }
    EXPECT_GT(fitsFrom, 0.8);
    EXPECT_LT(fitsFrom, 1.4);
}

TEST(PulseCheck, BehindAnOpenedThrottleWithoutAnEnrichmentItFitsAtOnce) {
    PulseCheck check;
    ASSERT_TRUE(check.fits(-0.05, 0.0, kDuty));
    check.expect(0.0);
    EXPECT_TRUE(check.fits(0.05, 0.004, kDuty));
}

// Of 20 counts a count is 5 per cent: single frames show nothing of 4 per cent, their mean does.
TEST(PulseCheck, TheMeanSeesWhatACountHides) {
    PulseCheck check;
    check.expect(0.0);
    int fitting = 0;
    for (int frame = 1; frame < 60; ++frame) {
        fitting += check.fits(0.05 * frame, frame % 5 == 0 ? 0.0 : 0.05, 20.0) && 0.05 * frame > 0.5 ? 1 : 0;
    }
    EXPECT_EQ(fitting, 0);
}

}  // namespace
}  // namespace korvane::steady
