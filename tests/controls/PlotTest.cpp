// Where values stand in a plot.
#include <gtest/gtest.h>

#include "controls/Plot.h"

namespace korvane::controls {
namespace {

TEST(PlotTest, TheUpperEdgeIsARoundNumberThatIsNotBelow) {
    EXPECT_EQ(plotTop(0.0), 1.0);
    EXPECT_EQ(plotTop(1.0), 1.0);
    EXPECT_EQ(plotTop(1.1), 2.0);
    EXPECT_EQ(plotTop(2.1), 5.0);
    EXPECT_EQ(plotTop(5.1), 10.0);
    EXPECT_EQ(plotTop(10.0), 10.0);
    EXPECT_EQ(plotTop(11.0), 20.0);
    EXPECT_EQ(plotTop(499.0), 500.0);
}

TEST(PlotTest, TimeGoesToTheRightAndValuesGoUp) {
    const PlotFrame frame{6000.0, 2000.0, 600.0, 10.0};
    EXPECT_EQ(frame.at(0.0, 0.0), (Point{0, 2000}));
    EXPECT_EQ(frame.at(600.0, 10.0), (Point{6000, 0}));
    EXPECT_EQ(frame.at(300.0, 5.0), (Point{3000, 1000}));
    EXPECT_EQ(frame.at(300.0, 50.0), (Point{3000, 0})) << "above the edge";
}

TEST(PlotTest, WhatDoesNotFitACoordinateIsCutOff) {
    EXPECT_EQ(plotTwips(1e9), 32000);
    EXPECT_EQ(plotTwips(-1e9), -32000);
}

}  // namespace
}  // namespace korvane::controls
