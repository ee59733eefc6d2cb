// The draw of a log's page, to the coordinate. The rows hold their own number in Twater and ten times that in RPM,
// which the reader divides by ten.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LogText.h"
#include "support/TempFolder.h"
#include "trend/DrawingBench.h"
#include "trend/cTrendline_New.h"

namespace korvane::trend {
namespace {

using controls::kCyan;
using controls::kDarkGrey;
using controls::kMagenta;
using controls::kRed;
using controls::kWhite;
using controls::kYellow;
using support::LogText;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr int kRpm = 1;
constexpr int kTwater = 2;

Point at(int x, int y) {
    return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
}

class SqlTrendTest : public DrawingBench {
protected:
    SqlTrendTest() {
        line_.PicBox = &picture_;
        load(support::numberedLog(100));
        page(0, 100);
    }

    void load(const std::string& text) { static_cast<void>(reader_.LoadFromFile(folder_.write("log.txt", text))); }
    void page(int first, int last) {
        line_.firstRow = first;
        line_.lastRow = last;
        line_.maxX = last - first;
    }
    void draw(const LogColumns& columns = {kTwater, 0, 0, 0, 0}, bool rightScale = false) {
        line_.DrawSQLTrend(reader_, columns, rightScale);
    }
    [[nodiscard]] std::vector<std::string> messages() {
        std::vector<std::string> texts;
        for (const auto& box : dialogs_.takeMessages()) {
            texts.push_back(box.text);
        }
        return texts;
    }

    support::TempFolder folder_;
    core::LiveTable live_;
    logs::clsTXTdata reader_{live_, '.'};
    cTrendline_New line_{dialogs_};
};

TEST_F(SqlTrendTest, HasItsDefaults) {
    const cTrendline_New line(dialogs_);
    EXPECT_EQ(line.firstRow, 0);
    EXPECT_EQ(line.lastRow, 0);
    EXPECT_EQ(line.DrawPoints, 300);
    EXPECT_FALSE(line.AutoScale);
    EXPECT_EQ(line.maxY, 100);
    EXPECT_EQ(line.minY, 0);
    EXPECT_EQ(line.Resolution, 10);
    EXPECT_EQ(line.maxX, 300);
    EXPECT_FALSE(line.ShowLimits);
    EXPECT_FALSE(line.ToRight);
    EXPECT_TRUE(line.ShowValue);
    EXPECT_TRUE(line.XTitleShow);
    EXPECT_EQ(line.XTitleScale, 60);
    EXPECT_EQ(line.XTitleEnd, " min");
    EXPECT_EQ(line.XTitleKerroin, 1.0F);
    EXPECT_EQ(line.PicBox, nullptr);
}

// The third row of the page to the last but one, from the right edge leftwards; 67 twips and 32 twips for each row.
TEST_F(SqlTrendTest, ASegmentJoinsEachRowWithTheNext) {
    draw();
    ASSERT_THAT(series(), SizeIs(1));
    const auto points = series()[0].points;
    ASSERT_THAT(points, SizeIs(98));
    for (int row = 2; row <= 99; ++row) {
        EXPECT_EQ(points[static_cast<std::size_t>(row - 2)], at(7200 - row * 67, 3300 - row * 32)) << row;
    }
    EXPECT_EQ(series()[0].color, kWhite);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(SqlTrendTest, ALaterPageBeginsAtTheRightEdgeToo) {
    page(40, 60);
    draw();
    const auto points = series()[0].points;
    ASSERT_THAT(points, SizeIs(18));  // rows 42 to 59, 335 twips each
    EXPECT_EQ(points.front(), at(7200 - 2 * 335, 3300 - 42 * 32));
    EXPECT_EQ(points.back(), at(7200 - 19 * 335, 3300 - 59 * 32));
}

TEST_F(SqlTrendTest, ValuesOutsideThePlotAreLimitedToItsEdges) {
    LogText log;
    for (const auto* value : {"0", "0", "101", "100", "-1", "1E30", "-1E30", "0"}) {
        log.row(0, {{kTwater, value}});
    }
    load(log.text());
    page(0, 8);
    draw();
    ASSERT_THAT(series(), SizeIs(1));
    std::vector<int> levels;
    const auto line = series()[0];
    for (const auto& point : line.points) {
        levels.push_back(point.y);
    }
    EXPECT_THAT(levels, ElementsAre(3300, 100, 100, 3300, 100, 3300));  // rows 2 to 7
}

TEST_F(SqlTrendTest, APageOfLessThanFiveRowsHasNoLine) {
    page(10, 13);
    draw();
    EXPECT_THAT(series(), IsEmpty());
    page(10, 14);
    draw();
    EXPECT_THAT(series()[0].points, SizeIs(2));
}

TEST_F(SqlTrendTest, TheFiveSeriesHaveTheirColoursAndNames) {
    draw({1, 2, 3, 4, 5});
    const std::vector<Color> normal{kWhite, kYellow, kRed, kCyan, kMagenta};
    const std::vector<std::string> names{"RPM", "Twater", "Tair", "Voltage", "MAP"};
    ASSERT_THAT(series(), SizeIs(5));
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(series()[i].color, normal[i]);
        EXPECT_THAT(texts(), Contains(Words{at(7250, 260 + 350 * static_cast<int>(i)), names[i], normal[i]}));
    }
    line_.ShowLimits = true;
    draw({1, 2, 3, 4, 5});
    const std::vector<Color> limits{kWhite, kRed, kMagenta, kRed, kMagenta};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(series()[i].color, limits[i]);
    }
}

TEST_F(SqlTrendTest, ASeriesThatIsOffTakesNoPlaceInTheLegend) {
    draw({0, 0, kTwater, 0, kRpm});
    EXPECT_THAT(texts(), Contains(Words{at(7250, 260), "Twater", kRed}));
    EXPECT_THAT(texts(), Contains(Words{at(7250, 610), "RPM", kMagenta}));
    EXPECT_THAT(series(), SizeIs(2));
}

TEST_F(SqlTrendTest, TheLegendHasOneLineForEachSeries) {
    draw();
    EXPECT_THAT(texts(), Not(Contains(testing::Field(&Words::words, ""))));
}

TEST_F(SqlTrendTest, WithAllSeriesOffOnlyGridAndFrameAreDrawn) {
    draw({0, 0, 0, 0, 0});
    EXPECT_THAT(series(), IsEmpty());
    EXPECT_THAT(horizontal(), SizeIs(10));
    EXPECT_THAT(vertical(), SizeIs(11));
    EXPECT_THAT(shapesOf(Drawing::Kind::Box), SizeIs(1));
    EXPECT_THAT(texts(), SizeIs(10 + 11 + 2));
}

TEST_F(SqlTrendTest, TheFrameAndTheValueGridStandAroundThePlot) {
    draw();
    EXPECT_THAT(shapesOf(Drawing::Kind::Box)[0].points, ElementsAre(at(500, 100), at(7200, 3300)));
    for (int i = 0; i < 10; ++i) {
        const int y = 3300 - 320 * i;
        EXPECT_EQ(horizontal()[static_cast<std::size_t>(i)], (Line{{at(500, y), at(7200, y)}, kDarkGrey}));
        EXPECT_THAT(texts(), Contains(Words{at(50, y - 85), std::to_string(10 * i), kWhite}));
    }
}

// Steps of 9.9 rows, 663.3 twips each.
TEST_F(SqlTrendTest, TheRowGridHasTenStepsFromTheFirstRow) {
    draw();
    const auto lines = vertical();
    ASSERT_THAT(lines, SizeIs(11));
    EXPECT_EQ(lines[0], (Line{{at(7200, 100), at(7200, 3300)}, kDarkGrey}));
    EXPECT_EQ(lines[1].points[0].x, 6537);
    EXPECT_EQ(lines[10].points[0].x, 567);
    EXPECT_THAT(texts(), Contains(Words{at(7115, 3385), "1", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(6452, 3385), "10.9", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(482, 3385), "100", kWhite}));
}

TEST_F(SqlTrendTest, ThePageIsToldBesideThePlot) {
    page(25, 75);
    draw();
    EXPECT_THAT(texts(), Contains(Words{at(7250, 2600), "from 25", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(7250, 2900), "to 75 50", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(7115, 3385), "26", kWhite}));
}

TEST_F(SqlTrendTest, ASingleRowHasASingleLineAcross) {
    page(0, 1);
    draw();
    EXPECT_THAT(vertical(), SizeIs(1));
}

TEST_F(SqlTrendTest, APageThatEndsBeforeItBeginsHasNoLinesAcross) {
    page(2, 1);
    draw();
    EXPECT_THAT(vertical(), IsEmpty());
    EXPECT_THAT(texts(), Contains(Words{at(7250, 2900), "to 1 -1", kWhite}));
}

TEST_F(SqlTrendTest, ZeroesInTheScalesBecomeTheirDefaults) {
    page(5, 5);
    line_.maxY = 0;
    line_.Resolution = 0;
    draw();
    EXPECT_EQ(line_.maxX, 600);
    EXPECT_EQ(line_.maxY, 100);
    EXPECT_EQ(line_.Resolution, 10);
    EXPECT_THAT(texts(), Contains(Words{at(7250, 2900), "to 5 600", kWhite}));
}

TEST_F(SqlTrendTest, ANegativeMinimumLiftsZero) {
    line_.minY = -1;
    draw();
    EXPECT_EQ(horizontal()[0].points[0].y, 3300 + 320 + 320);  // ten below zero, which lies a tenth lower
    EXPECT_EQ(series()[0].points[48], at(7200 - 50 * 67, 3620 - 50 * 32));
    EXPECT_EQ(series()[0].points[0].y, 3300) << "limited to the plot";
}

TEST_F(SqlTrendTest, ARightScaleStandsBesideThePlotAndMovesTheLegend) {
    draw({kTwater, 0, 0, 0, 0}, true);
    EXPECT_THAT(texts(), Contains(Words{at(7210, 3300 - 85), "0", kYellow}));
    EXPECT_THAT(texts(), Contains(Words{at(7210, 100 - 85), "100", kYellow}));
    EXPECT_THAT(texts(), Contains(Words{at(7600, 260), "Twater", kWhite}));
    EXPECT_THAT(texts(), Contains(Words{at(7600, 2600), "from 0", kWhite}));
}

TEST_F(SqlTrendTest, EveryDrawBeginsOnAClearedSurfaceWithAWhiteForeground) {
    draw();
    const auto first = texts();
    draw();
    EXPECT_EQ(texts(), first);
    EXPECT_EQ(picture_.ForeColor.get(), kWhite);
}

// The first four series take a cell by the regional settings, the fifth reads as far as there is a number.
TEST_F(SqlTrendTest, ATextEndsTheDrawWithAMessage) {
    LogText log;
    for (const auto* value : {"1", "2", "3", "4x", "5", "6", "7", "8"}) {
        log.row(0, {{kTwater, value}});
    }
    load(log.text());
    page(0, 8);
    draw({kTwater, 3, 0, 0, 0});
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Type mismatch"));
    ASSERT_THAT(series(), SizeIs(1)) << "the second series is not begun";
    EXPECT_THAT(series()[0].points, SizeIs(2)) << "rows 2 and 3";
    draw({0, 0, 0, 0, kTwater});
    EXPECT_THAT(messages(), IsEmpty());
    ASSERT_THAT(series()[0].points, SizeIs(6));
    EXPECT_EQ(series()[0].points[2].y, 3300 - 4 * 32);
}

TEST_F(SqlTrendTest, ATextOnAnotherPageDoesNoHarm) {
    LogText log;
    for (int row = 1; row <= 40; ++row) {
        log.row(0, {{kTwater, row == 20 ? "x" : std::to_string(row)}});
    }
    load(log.text());
    page(20, 40);
    draw();
    EXPECT_THAT(messages(), IsEmpty());
    ASSERT_THAT(series()[0].points, SizeIs(18));
    EXPECT_EQ(series()[0].points[0].y, 3300 - 22 * 32);
    page(0, 19);
    draw();
    EXPECT_THAT(messages(), IsEmpty());
    page(0, 22);
    draw();
    EXPECT_THAT(messages(), SizeIs(1));
}

TEST_F(SqlTrendTest, RowsBehindTheLogAreZerosUpToTheLastRowThereCanBe) {
    page(90, 120);
    draw();
    ASSERT_THAT(series()[0].points, SizeIs(28));  // rows 92 to 119
    EXPECT_EQ(series()[0].points[8].y, 3300 - 100 * 32);
    EXPECT_EQ(series()[0].points[9].y, 3300);
    page(99'990, 100'001);
    draw();
    EXPECT_THAT(messages(), IsEmpty());
    page(99'990, 100'002);
    draw({0, 0, 0, 0, kTwater});
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Subscript out of range"));
}

TEST_F(SqlTrendTest, RowsBeforeTheLogAreAFailure) {
    page(-498, 2);
    draw();
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Subscript out of range"));
    EXPECT_THAT(texts(), Contains(Words{at(7250, 260), "Twater", kWhite})) << "drawn as far as it came";
}

TEST_F(SqlTrendTest, RowsThatNoNumberHoldsAreAFailure) {
    line_.firstRow = 2147483647;
    line_.lastRow = -2147483648;
    draw();
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Overflow"));
    line_.AutoScale = true;
    draw();
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Overflow"));
}

TEST_F(SqlTrendTest, AColumnThatDoesNotExistIsAFailure) {
    draw({31, 0, 0, 0, 0});
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Subscript out of range"));
}

TEST_F(SqlTrendTest, WithoutASurfaceThereIsAMessage) {
    line_.PicBox = nullptr;
    draw();
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Object variable not set"));
}

class SqlAutoScale : public SqlTrendTest {
protected:
    SqlAutoScale() { line_.AutoScale = true; }
    // The scale for a page whose highest value is this.
    int scaleOf(const std::string& peak, int maxY) {
        load(LogText().row(0).row(0, {{kTwater, peak}}).row(0).row(0).row(0).row(0).text());
        page(0, 6);
        line_.maxY = maxY;
        draw();
        return line_.maxY;
    }
};

TEST_F(SqlAutoScale, GrowsAtOnceAndShrinksPastAMargin) {
    EXPECT_EQ(scaleOf("94", 100), 100);
    EXPECT_EQ(scaleOf("95", 100), 105);
    EXPECT_EQ(scaleOf("900", 100), 910);
    EXPECT_EQ(scaleOf("85", 100), 100);
    EXPECT_EQ(scaleOf("84", 100), 94);
}

TEST_F(SqlAutoScale, ThePeakCountsAsAWholeNumber) {
    EXPECT_EQ(scaleOf("94.5", 100), 100);
    EXPECT_EQ(scaleOf("95.5", 100), 106);
}

TEST_F(SqlAutoScale, LooksAtTheRowsUpToTheLastButTwo) {
    page(50, 90);  // rows 50 to 88
    draw();
    EXPECT_EQ(line_.maxY, 100);
    line_.maxY = 200;
    draw();
    EXPECT_EQ(line_.maxY, 98);
}

TEST_F(SqlAutoScale, LooksAtSeriesThatAreOnAlone) {
    line_.maxY = 50;
    draw({0, 0, 0, 0, 0});
    EXPECT_EQ(line_.maxY, 10);
}

TEST_F(SqlAutoScale, TheNamesInRow0CountAsZero) {
    draw({kTwater, 0, 0, 0, kRpm});
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(SqlAutoScale, ATextEndsTheDrawBeforeAnythingIsCleared) {
    draw();
    const auto before = texts();
    EXPECT_EQ(scaleOf("x", 100), 100);
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Type mismatch"));
    EXPECT_EQ(texts(), before);
}

TEST_F(SqlAutoScale, APeakThatNoScaleHoldsEndsTheDraw) {
    EXPECT_EQ(scaleOf("2147483647", 100), 100);
    EXPECT_THAT(messages(), ElementsAre("Error: cDrawSQLTrend Overflow"));
}

}  // namespace
}  // namespace korvane::trend
