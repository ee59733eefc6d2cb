#include <gmock/gmock.h>

#include "TrendBench.h"

namespace korvane::trend {
namespace {

using controls::kCyan;
using controls::kDarkGrey;
using controls::kMagenta;
using controls::kRed;
using controls::kWhite;
using controls::kYellow;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

Point at(int x, int y) {
    return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
}

class TrendlineTest : public TrendBench {};

TEST_F(TrendlineTest, HasItsDefaults) {
    const cTrendline line;
    EXPECT_EQ(line.DrawPoints, 300);
    EXPECT_EQ(line.maxY, 100);
    EXPECT_EQ(line.minY, 0);
    EXPECT_EQ(line.Resolution, 10);
    EXPECT_EQ(line.maxX, 300);
    EXPECT_FALSE(line.ShowLimits);
    EXPECT_FALSE(line.AutoScale);
    EXPECT_EQ(line.PicBox, nullptr);
}

TEST_F(TrendlineTest, TheFrameStandsAroundThePlot) {
    draw();
    const auto boxes = shapesOf(Drawing::Kind::Box);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_THAT(boxes[0].points, ElementsAre(at(500, 100), at(7200, 3300)));
}

TEST_F(TrendlineTest, TheValueGridHasTenStepsFromZeroUp) {
    draw();
    const auto lines = horizontal();
    ASSERT_EQ(lines.size(), 10U);
    for (int i = 0; i < 10; ++i) {
        const int y = 3300 - 320 * i;
        EXPECT_EQ(lines[static_cast<std::size_t>(i)], (Line{{at(500, y), at(7200, y)}, kDarkGrey}));
        EXPECT_THAT(texts(), Contains(Words{at(50, y - 85), std::to_string(10 * i), kWhite}));
    }
    EXPECT_THAT(texts(), Not(Contains(testing::Field(&Words::words, "100"))));
}

TEST_F(TrendlineTest, TheLabelsOfTheValueGridAreWholeNumbers) {
    line_.maxY = 25;
    line_.Resolution = 4;
    draw();
    ASSERT_EQ(horizontal().size(), 4U);
    EXPECT_EQ(horizontal()[1].points[0].y, 2500);
    EXPECT_THAT(texts(), Contains(Words{at(50, 3215), "0", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(50, 2415), "6", kWhite}));   // 6.25
    EXPECT_THAT(texts(), Contains(Words{at(50, 1615), "12", kWhite}));  // 12.5
    EXPECT_THAT(texts(), Contains(Words{at(50, 815), "18", kWhite}));   // 18.75
}

TEST_F(TrendlineTest, TheTimeGridStepsBySixtyRowsFromTheNewest) {
    draw();
    const auto lines = vertical();
    ASSERT_EQ(lines.size(), 6U);
    for (int i = 0; i < 6; ++i) {
        const int x = 7200 - 1340 * i;  // 60 / 300 of 6700
        EXPECT_EQ(lines[static_cast<std::size_t>(i)], (Line{{at(x, 100), at(x, 3300)}, kDarkGrey}));
        EXPECT_THAT(texts(), Contains(Words{at(x - 85, 3385), std::to_string(i) + " min", kWhite}));
    }
}

TEST_F(TrendlineTest, TheTimeGridEndsWithTheRowsOnShow) {
    line_.maxX = 119;
    draw();
    ASSERT_EQ(vertical().size(), 2U);
    EXPECT_EQ(vertical()[1].points[0].x, 3822);  // 7200 - 60 / 119 * 6700 = 3821.85
}

TEST_F(TrendlineTest, TheLegendShowsNameNewestValueAndUnit) {
    table_.describe(0, "Map", " s");
    table_.describe(1, "Throttle", " %");
    table_.push(1, 0);
    table_.push(1.28, 0);
    table_.push(50, 1);
    draw();
    EXPECT_THAT(texts(), Contains(Words{at(7250, 260), "Map", kWhite}));  // 100 + 3200 * 5 / 100
    EXPECT_THAT(texts(), Contains(Words{at(7250, 410), "1.28 (  s )", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(7250, 610), "Throttle", kYellow}));
    EXPECT_THAT(texts(), Contains(Words{at(7250, 760), "50 (  % )", kYellow}));
}

TEST_F(TrendlineTest, ASeriesWithoutSamplesHasNoValueInTheLegend) {
    table_.describe(0, "Map", " s");
    draw();
    EXPECT_THAT(texts(), Contains(Words{at(7250, 410), " (  s )", kWhite}));
}

TEST_F(TrendlineTest, ANamelessSeriesTakesNoPlaceInTheLegendAndHasNoLine) {
    table_.describe(0, "Map", " s");
    table_.describe(2, "Lambda", " s");
    pushAll(50, 10, 0);
    pushAll(50, 10, 1);
    pushAll(50, 10, 2);
    draw();
    EXPECT_THAT(texts(), Contains(Words{at(7250, 610), "Lambda", kRed}));
    ASSERT_EQ(series().size(), 2U);
    EXPECT_EQ(series()[0].color, kWhite);
    EXPECT_EQ(series()[1].color, kRed);
}

TEST_F(TrendlineTest, TheFiveSeriesHaveTheirColours) {
    for (int i = 0; i < 6; ++i) {
        table_.describe(i, "name", "");
    }
    draw();
    const std::vector<Color> normal{kWhite, kYellow, kRed, kCyan, kMagenta};
    ASSERT_EQ(series().size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(series()[i].color, normal[i]);
    }
    line_.ShowLimits = true;
    draw();
    const std::vector<Color> limits{kWhite, kRed, kMagenta, kRed, kMagenta};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(series()[i].color, limits[i]);
    }
}

// Row 2 at the right edge, one row further left by 6700 / 300 twips each, up to row 299.
TEST_F(TrendlineTest, ALineRunsFromTheNewestSampleAtTheRightEdgeLeftwards) {
    table_.describe(0, "Map", "");
    for (int i = 400; i >= 1; --i) {
        table_.push(i, 0);  // row 2 holds 1, row r holds r - 1
    }
    line_.maxY = 1000;
    draw();
    ASSERT_EQ(series().size(), 1U);
    const auto points = series()[0].points;
    ASSERT_EQ(points.size(), 298U);         // rows 2 to 299
    EXPECT_EQ(points[0], at(7200, 3297));   // 3300 - 3.2
    EXPECT_EQ(points[1], at(7178, 3294));   // 7177.67, 3293.6
    EXPECT_EQ(points[2], at(7155, 3290));   // 7155.33, 3290.4
    EXPECT_EQ(points[3], at(7133, 3287));   // 7133, 3287.2
    EXPECT_EQ(points[297], at(567, 2346));  // 7200 - 297 * 22.3333, 3300 - 298 * 3.2 = 2346.4
}

TEST_F(TrendlineTest, DrawPointsDoesNotChangeTheRowsOnShow) {
    table_.describe(0, "Map", "");
    line_.DrawPoints = 350;
    draw();
    EXPECT_EQ(series().at(0).points.size(), 298U);
    EXPECT_EQ(vertical().size(), 6U);
}

TEST_F(TrendlineTest, ValuesOutsideThePlotAreLimitedToItsEdges) {
    table_.describe(0, "Map", "");
    pushAll(50);
    pushAll(-1);
    pushAll(101);
    pushAll(1e12);
    pushAll(-1e12);
    pushAll(100);
    pushAll(0);
    draw();
    const auto points = series().at(0).points;
    EXPECT_EQ(points[0].y, 3300);
    EXPECT_EQ(points[1].y, 100);
    EXPECT_EQ(points[2].y, 3300);
    EXPECT_EQ(points[3].y, 100);
    EXPECT_EQ(points[4].y, 100);
    EXPECT_EQ(points[5].y, 3300);
    EXPECT_EQ(points[6].y, 1700);
}

TEST_F(TrendlineTest, EveryDrawBeginsOnAClearedSurface) {
    table_.describe(0, "Map", " s");
    draw();
    const auto count = picture_.drawing().shapes().size();
    draw();
    EXPECT_EQ(picture_.drawing().shapes().size(), count);
}

// A negative minY moves zero by a tenth of the plot's height, and the grid begins one step below zero.
TEST_F(TrendlineTest, ANegativeMinimumLiftsZero) {
    table_.describe(0, "Map", "");
    pushAll(50);
    line_.minY = -10;
    draw();
    const auto lines = horizontal();
    ASSERT_EQ(lines.size(), 11U);
    for (int i = -1; i < 10; ++i) {
        const int y = 3300 + 320 - 320 * i;
        EXPECT_EQ(lines[static_cast<std::size_t>(i + 1)].points[0].y, y);
        EXPECT_THAT(texts(), Contains(Words{at(50, y - 85), std::to_string(10 * i), kWhite}));
    }
    const auto points = series().at(0).points;
    EXPECT_EQ(points[0].y, 3300 + 320 - 1600);
    EXPECT_EQ(points[1].y, 3300) << "zero lies below the frame and is limited to its bottom";
}

TEST_F(TrendlineTest, ARightScaleRunsFrom0To100InTheSecondSeriesColour) {
    table_.describe(0, "Map", "");
    draw(true);
    for (int i = 0; i <= 10; ++i) {
        EXPECT_THAT(texts(), Contains(Words{at(7210, 3300 - 320 * i - 85), std::to_string(10 * i), kYellow}));
    }
    EXPECT_THAT(texts(), Contains(Words{at(7600, 260), "Map", kWhite})) << "the legend makes room for it";
}

TEST_F(TrendlineTest, WithoutOneNothingStandsInItsPlace) {
    table_.describe(0, "Map", "");
    draw();
    EXPECT_THAT(texts(), Contains(testing::Field(&Words::words, "Map")));
    for (const auto& words : texts()) {
        EXPECT_NE(words.at.x, 7210);
    }
}

TEST_F(TrendlineTest, ZeroesInTheScalesBecomeTheirDefaults) {
    line_.maxY = 0;
    line_.Resolution = 0;
    draw();
    EXPECT_EQ(line_.maxY, 100);
    EXPECT_EQ(line_.Resolution, 10);
    EXPECT_EQ(horizontal().size(), 10U);
    line_.maxX = 0;
    draw();
    EXPECT_EQ(line_.maxX, 600);
    EXPECT_EQ(vertical().size(), 11U);
}

// Rows end at 400: the first line is drawn that far and the draw fails there.
TEST_F(TrendlineTest, MoreRowsThanTheTableHasEndTheDrawAtItsLastRow) {
    table_.describe(0, "Map", "");
    table_.describe(1, "Throttle", "");
    line_.maxX = 0;
    line_.AutoScale = false;
    draw();
    ASSERT_EQ(series().size(), 1U);
    EXPECT_EQ(series()[0].points.size(), 399U);  // rows 2 to 400
    EXPECT_EQ(series()[0].points[398].x, 2756);  // 7200 - 398 * 6700 / 600 = 2755.67
}

TEST_F(TrendlineTest, TooFewRowsForASegmentDrawNoLine) {
    table_.describe(0, "Map", "");
    for (const std::int16_t rows : std::initializer_list<std::int16_t>{1, 2, 3}) {
        line_.maxX = rows;
        line_.AutoScale = true;
        draw();
        EXPECT_THAT(series(), IsEmpty()) << rows;
        EXPECT_THAT(texts(), Contains(testing::Field(&Words::words, "Map")));
    }
}

TEST_F(TrendlineTest, AutoScaleWithNoRowsOnShowDrawsTheGridAllTheSame) {
    table_.describe(0, "Map", "");
    line_.maxX = 0;
    line_.AutoScale = true;
    draw();
    EXPECT_EQ(line_.maxY, 10);
    EXPECT_EQ(vertical().size(), 11U);
}

TEST_F(TrendlineTest, ATooWideSurfaceEndsTheDrawSilently) {
    table_.describe(0, "Map", "");
    picture_.Width = 60000;  // right edge 48000
    draw();
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(TrendlineTest, ATooHighSurfaceEndsTheDrawSilently) {
    table_.describe(0, "Map", "");
    picture_.Height = 40000;  // bottom 39700
    draw();
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
}

TEST_F(TrendlineTest, TheNextDrawTriesAgain) {
    table_.describe(0, "Map", "");
    picture_.Height = 40000;
    draw();
    picture_.Height = 3600;
    draw();
    EXPECT_EQ(series().size(), 1U);
}

// A draw that waits shows what it was asked for, whatever has changed until somebody looks.
TEST_F(TrendlineTest, ADrawThatWaitsShowsTheTableAndTheScalesOfItsTime) {
    table_.describe(0, "Map", " s");
    line_.AutoScale = true;
    pushAll(50, 20);
    draw();
    const auto before = std::pair(texts(), shapesOf(Drawing::Kind::Polyline));
    line_.DrawTrendLater(table_, false);
    pushAll(200, 7);
    line_.maxY = 7;
    line_.minY = -5;
    line_.maxX = 100;
    line_.ShowLimits = true;
    picture_.Width = 4000;
    picture_.Height = 2000;
    EXPECT_EQ(std::pair(texts(), shapesOf(Drawing::Kind::Polyline)), before);
    draw();
    EXPECT_NE(std::pair(texts(), shapesOf(Drawing::Kind::Polyline)), before);
}

TEST_F(TrendlineTest, TheScaleOfADrawThatWaitsFollowsAtOnce) {
    table_.describe(0, "Map", " s");
    line_.AutoScale = true;
    pushAll(150);
    line_.DrawTrendLater(table_, false);
    EXPECT_EQ(line_.maxY, 160);
}

TEST_F(TrendlineTest, AFailureLeavesADrawThatWaits) {
    table_.describe(0, "Map", " s");
    line_.AutoScale = true;
    pushAll(50);
    line_.DrawTrendLater(table_, false);
    pushAll(40000);
    line_.DrawTrendLater(table_, false);
    pushAll(1, 300);
    picture_.Width = 60000;
    line_.DrawTrendLater(table_, false);
    EXPECT_THAT(texts(), Contains(Words{at(7250, 410), "50 (  s )", kWhite}));
}

TEST_F(TrendlineTest, WithoutASurfaceTheDrawEndsBeforeItsScalesChange) {
    line_.PicBox = nullptr;
    line_.maxY = 0;
    draw();
    EXPECT_EQ(line_.maxY, 0);
    EXPECT_THAT(picture_.drawing().shapes(), IsEmpty());
}

// The frame is as far inside out as the surface is too small for it. A value of 50 belongs into its middle; where the
// bottom is above the top, the bottom is its place.
TEST_F(TrendlineTest, ASmallSurfaceTurnsTheFrameInsideOut) {
    table_.describe(0, "Map", "");
    pushAll(50, 400);
    for (const auto& [size, right, bottom, level] : {std::tuple{-100, -80, -400, -400},
                                                     {0, 0, -300, -300},
                                                     {1, 1, -299, -299},
                                                     {100, 80, -200, -200},
                                                     {400, 320, 100, 100},
                                                     {625, 500, 325, 212}}) {  // 325 - 225 / 2 = 212.5
        picture_.Width = size;
        picture_.Height = size;
        draw();
        const auto boxes = shapesOf(Drawing::Kind::Box);
        ASSERT_EQ(boxes.size(), 1U) << size;
        EXPECT_THAT(boxes[0].points, ElementsAre(at(500, 100), at(right, bottom))) << size;
        ASSERT_EQ(series().size(), 1U) << size;
        EXPECT_EQ(series()[0].points.size(), 298U);  // rows 2 to 299
        EXPECT_EQ(series()[0].points.front(), at(right, level)) << size;
        EXPECT_THAT(series()[0].points, Each(testing::Field(&Point::y, level))) << size;
    }
}

class AutoScaleTest : public TrendBench {
protected:
    AutoScaleTest() {
        table_.describe(0, "Map", "");
        line_.AutoScale = true;
    }
    // The scale after a draw whose largest value on show is `peak`.
    int scaleFor(double peak, int before) {
        line_.maxY = static_cast<std::int16_t>(before);
        pushAll(peak, 400);
        draw();
        return line_.maxY;
    }
};

TEST_F(AutoScaleTest, GrowsAtOnceWhenThePeakComesWithin5OfTheTop) {
    EXPECT_EQ(scaleFor(94, 100), 100);
    EXPECT_EQ(scaleFor(95, 100), 105);
    EXPECT_EQ(scaleFor(100, 100), 110);
    EXPECT_EQ(scaleFor(500, 100), 510);
}

TEST_F(AutoScaleTest, FallsOnlyWhenThePeakIsMoreThan15BelowTheTop) {
    EXPECT_EQ(scaleFor(85, 100), 100);
    EXPECT_EQ(scaleFor(84, 100), 94);
    EXPECT_EQ(scaleFor(0, 100), 10);
}

TEST_F(AutoScaleTest, StaysWhereItSettles) {
    EXPECT_EQ(scaleFor(50, 100), 60);
    draw();
    draw();
    EXPECT_EQ(line_.maxY, 60);
}

TEST_F(AutoScaleTest, ThePeakCountsAsAWholeNumber) {
    EXPECT_EQ(scaleFor(94.4, 100), 100);
    EXPECT_EQ(scaleFor(94.6, 100), 105);
}

TEST_F(AutoScaleTest, LooksAtRows2To298) {
    pushAll(90);
    pushAll(0, 296);
    draw();
    EXPECT_EQ(table_.value(0, 298), 90);
    EXPECT_EQ(line_.maxY, 100);
    pushAll(0);
    draw();
    EXPECT_EQ(line_.maxY, 10) << "in row 299 nobody sees it";
}

TEST_F(AutoScaleTest, LooksAtEveryRowOnShow) {
    for (int row = 2; row <= 298; ++row) {
        TrendTable table;
        table.describe(0, "Map", "");
        table.push(777, 0);
        for (int i = 2; i < row; ++i) {
            table.push(0, 0);
        }
        line_.maxY = 100;
        line_.DrawTrend(table, false);
        ASSERT_EQ(line_.maxY, 787) << row;
    }
}

TEST_F(AutoScaleTest, LooksAtNamedSeriesAlone) {
    table_.describe(4, "RPM/10", "");
    pushAll(500, 1, 1);
    draw();
    EXPECT_EQ(line_.maxY, 10);
    pushAll(300, 1, 4);
    draw();
    EXPECT_EQ(line_.maxY, 310);
}

TEST_F(AutoScaleTest, IsOffUnlessAskedFor) {
    line_.AutoScale = false;
    EXPECT_EQ(scaleFor(500, 100), 100);
}

TEST_F(AutoScaleTest, APeakThat16BitsCantHoldEndsTheDraw) {
    EXPECT_EQ(scaleFor(40000, 100), 100);
    EXPECT_THAT(series(), IsEmpty());
    scaleFor(32760, 100);
    EXPECT_EQ(line_.maxY, 100) << "10 more would not fit";
    EXPECT_THAT(series(), IsEmpty());
}

}  // namespace
}  // namespace korvane::trend
