#include <gtest/gtest.h>

#include "live/TrendSpan.h"

namespace korvane::live {
namespace {

constexpr platform::Micros kSecond = 1'000'000;

TEST(TrendSpan, TakesTwoSamples) {
    TrendSpan trend;
    EXPECT_EQ(trend.span(), std::nullopt);
    trend.add(5 * kSecond);
    EXPECT_EQ(trend.span(), std::nullopt);
    EXPECT_EQ(spanText(trend), "No samples yet.");
    trend.add(7 * kSecond);
    EXPECT_EQ(trend.span(), 2 * kSecond);
}

TEST(TrendSpan, IsThatOfTheSamplesThatAreDrawn) {
    TrendSpan trend;
    for (int i = 0; i < 1000; ++i) {
        trend.add(i * kSecond / 5);
    }
    EXPECT_EQ(trend.samples(), 350U);
    EXPECT_EQ(trend.span(), 349 * kSecond / 5);
    EXPECT_EQ(spanText(trend), "350 samples, the last 69.8 s. The scale below the plot is not this time.");
}

TEST(TrendSpan, CountsPausesAsTheyWere) {
    TrendSpan trend;
    for (const int second : {0, 1, 60, 61}) {
        trend.add(second * kSecond);
    }
    EXPECT_EQ(spanText(trend), "4 samples, the last 61 s. The scale below the plot is not this time.");
}

}  // namespace
}  // namespace korvane::live
