#include <gmock/gmock.h>

#include "TrendBench.h"
#include "trend/Plot.h"

namespace korvane::trend {
namespace {

using testing::Contains;
using testing::IsEmpty;

// Drawn by itself, as the page of a log is: rows of any number, the first value two rows left of the right edge.
struct PlotTest : TrendBench {
    void begin(int rows, bool rightScale = false) {
        plot_.begin(picture_, {.maxY = 800, .minY = 0, .Resolution = 10, .maxX = rows, .ShowLimits = false},
                    rightScale);
    }

    Plot plot_;
};

TEST_F(PlotTest, StandsWhereEveryPlotStands) {
    begin(10000);
    EXPECT_EQ(plot_.frame().left, 500);
    EXPECT_EQ(plot_.frame().right, 7200);
    EXPECT_EQ(plot_.frame().top, 100);
    EXPECT_EQ(plot_.frame().bottom, 3300);
    EXPECT_EQ(plot_.legendLeft(), 7250);
    begin(10000, true);
    EXPECT_EQ(plot_.legendLeft(), 7600);
}

TEST_F(PlotTest, ASeriesMayHaveAnyNumberOfRows) {
    begin(50000);
    const std::vector<double> values(49996, 400);
    plot_.drawSeries({values, 2}, 3);
    ASSERT_EQ(series().size(), 1U);
    const auto line = series()[0];
    EXPECT_EQ(line.color, controls::kCyan);
    ASSERT_EQ(line.points.size(), 49996U);
    EXPECT_EQ(line.points.front(), (Point{7200, 1700}));  // 7200 - 2 * 6700 / 50000 = 7199.73
    EXPECT_EQ(line.points[24998], (Point{3850, 1700}));   // 25000 rows are half of the width
    EXPECT_EQ(line.points.back(), (Point{500, 1700}));    // row 49997: 500.4
}

TEST_F(PlotTest, SeriesOfDifferentLengthsShareTheirRows) {
    begin(100);
    const std::vector<double> shorter(3, 0);
    const std::vector<double> longer(51, 800);
    plot_.drawSeries({shorter}, 0);
    plot_.drawSeries({longer}, 1);
    ASSERT_EQ(series().size(), 2U);
    EXPECT_EQ(series()[0].points[2], (Point{7066, 3300}));  // 7200 - 2 * 67
    EXPECT_EQ(series()[1].points[2], (Point{7066, 100}));
    EXPECT_EQ(series()[1].points[50], (Point{3850, 100}));
}

TEST_F(PlotTest, ADrawAfterAnotherScaleHasItsOwnRows) {
    const std::vector<double> values(3, 0);
    begin(100);
    plot_.drawSeries({values}, 0);
    begin(10);
    plot_.drawSeries({values}, 0);
    EXPECT_EQ(series().at(0).points[1], (Point{6530, 3300}));  // 7200 - 670
}

TEST_F(PlotTest, RowsBeyondTheLeftEdgeAreLeftOut) {
    begin(10);
    const std::vector<double> values(1000, 0);
    plot_.drawSeries({values, 4}, 0);
    ASSERT_EQ(series().at(0).points.size(), 7U);  // rows 4 to 10
    EXPECT_EQ(series()[0].points.back(), (Point{500, 3300}));
    begin(10);
    plot_.drawSeries({values, 11}, 0);
    plot_.drawSeries({}, 0);
    EXPECT_THAT(series(), IsEmpty());
}

TEST_F(PlotTest, RowLinesAndLegendStandWhereTheirOwnerPutsThem) {
    begin(1001);
    plot_.drawRowLine(100.1, "101");
    plot_.drawLegend("RPM", "", 0);
    plot_.drawLegend("MAP", "", 1);
    EXPECT_EQ(vertical().at(0).points[0], (Point{6530, 100}));
    EXPECT_THAT(texts(), Contains(Words{{6445, 3385}, "101", controls::kWhite}));
    EXPECT_THAT(texts(), Contains(Words{{7250, 260}, "RPM", controls::kWhite}));
    EXPECT_THAT(texts(), Contains(Words{{7250, 610}, "MAP", controls::kYellow}));
}

TEST(PlotScale, FollowsThePeak) {
    EXPECT_EQ(scaleFor(94, 100), 100);
    EXPECT_EQ(scaleFor(95, 100), 105);
    EXPECT_EQ(scaleFor(85, 100), 100);
    EXPECT_EQ(scaleFor(84, 100), 94);
    EXPECT_EQ(scaleFor(100000, 800), 100010);
}

TEST(PlotScale, ThePeakIsTheLargestValueWhereverItStands) {
    for (std::size_t place = 0; place < 11; ++place) {
        std::vector<double> values(11, -5);
        values[place] = 12.5;
        EXPECT_EQ(peakOf(values), 12.5) << place;
    }
    EXPECT_EQ(peakOf(std::vector<double>(5, -1)), 0);
    EXPECT_EQ(peakOf({}), 0);
}

}  // namespace
}  // namespace korvane::trend
