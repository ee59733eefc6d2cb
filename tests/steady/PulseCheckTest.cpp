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

}  // namespace
}  // namespace korvane::steady
