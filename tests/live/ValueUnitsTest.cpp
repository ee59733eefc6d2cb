#include <gtest/gtest.h>

#include "live/ValueUnits.h"

namespace korvane::live {
namespace {

TEST(ValueUnits, AreThoseOfTheDecoding) {
    const char* const expected[] = {"1/min", "°C", "°C", "V", "bar", "%", "AFR", "of 256", "", "", "°C", "°"};
    ValueUnits units;
    units.follow({});
    for (std::size_t i = 0; i < kValueLabels; ++i) {
        EXPECT_EQ(units.of(i), expected[i]) << i;
    }
    EXPECT_EQ(decodedUnit(12), "") << "an input";
}

TEST(ValueUnits, AScaledChannelHasNone) {
    core::LiveTable tables;
    tables.liveValues[4].gain = 14.5;
    tables.liveValues[1].offset = -3;  // a correction in the same unit
    ValueUnits units;
    units.follow(tables);
    EXPECT_EQ(units.of(4), "");
    EXPECT_EQ(units.of(1), "°C");
    tables.liveValues[4].gain = 1;
    units.follow(tables);
    EXPECT_EQ(units.of(4), "bar");
}

}  // namespace
}  // namespace korvane::live
