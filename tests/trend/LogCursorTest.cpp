#include <gtest/gtest.h>
#include <optional>

#include "trend/LogCursor.h"

namespace korvane::trend {
namespace {

// 100 rows on 1000 twips, ten for each. Row 202 stands at 1480, row 299 at 510.
constexpr LogCursor::Page kPage{200, 300, 100, 500, 1500};

struct LogCursorTest : testing::Test {
    LogCursorTest() { cursor.setPage(kPage); }

    LogCursor cursor;
};

TEST_F(LogCursorTest, MarksNothingByItself) {
    EXPECT_EQ(cursor.row(), std::nullopt);
    EXPECT_EQ(cursor.x(), 0);
}

TEST_F(LogCursorTest, GoesToTheRowNearestToThePointer) {
    cursor.moveTo(1000);
    EXPECT_EQ(cursor.row(), 250);
    EXPECT_EQ(cursor.x(), 1000);
    cursor.moveTo(1004);
    EXPECT_EQ(cursor.row(), 250);
    cursor.moveTo(1006);
    EXPECT_EQ(cursor.row(), 249);
    EXPECT_EQ(cursor.x(), 1010);
}

TEST_F(LogCursorTest, APlaceBesideTheLineIsItsEnd) {
    for (const double x : {1490.0, 1500.0, 9000.0, 1e300}) {
        cursor.moveTo(x);
        EXPECT_EQ(cursor.row(), 202) << x;
    }
    for (const double x : {505.0, 500.0, -9000.0, -1e300}) {
        cursor.moveTo(x);
        EXPECT_EQ(cursor.row(), 299) << x;
    }
}

TEST_F(LogCursorTest, StepsRowByRowAndStopsAtTheEnds) {
    cursor.moveTo(1000);
    cursor.moveLeft(1);
    EXPECT_EQ(cursor.row(), 251);
    cursor.moveLeft(-1);
    cursor.moveLeft(-1);
    EXPECT_EQ(cursor.row(), 249);
    cursor.moveLeft(1000);
    EXPECT_EQ(cursor.row(), 299);
    cursor.moveLeft(-1000);
    EXPECT_EQ(cursor.row(), 202);
}

TEST_F(LogCursorTest, TheFirstStepBeginsAtTheEdge) {
    cursor.moveLeft(1);
    EXPECT_EQ(cursor.row(), 202);
    cursor.clear();
    EXPECT_EQ(cursor.row(), std::nullopt);
    cursor.moveLeft(-1);
    EXPECT_EQ(cursor.row(), 299);
}

TEST_F(LogCursorTest, KeepsItsPlaceWhenThePageTurns) {
    cursor.moveTo(1000);
    cursor.setPage({1200, 1300, 100, 500, 1500});
    EXPECT_EQ(cursor.row(), 1250);
    EXPECT_EQ(cursor.x(), 1000);
}

TEST_F(LogCursorTest, KeepsItsRowWhenThePageGetsLonger) {
    cursor.moveTo(1000);
    cursor.setPage({200, 400, 200, 500, 1500});
    EXPECT_EQ(cursor.row(), 250);
    EXPECT_EQ(cursor.x(), 1250);
}

TEST_F(LogCursorTest, AShorterPageMovesItToTheEnd) {
    cursor.moveTo(1000);
    cursor.setPage({200, 220, 20, 500, 1500});
    EXPECT_EQ(cursor.row(), 219);
}

TEST_F(LogCursorTest, APageWithoutALineHasNoMark) {
    for (const LogCursor::Page page :
         {LogCursor::Page{}, LogCursor::Page{2, 2, 600, 500, 1500}, LogCursor::Page{2, 1, -1, 500, 1500},
          LogCursor::Page{0, 100, 0, 500, 1500}, LogCursor::Page{0, 100, 100, 500, 500}}) {
        cursor.setPage(kPage);
        cursor.moveTo(1000);
        cursor.setPage(page);
        EXPECT_EQ(cursor.row(), std::nullopt);
        cursor.moveTo(1000);
        EXPECT_EQ(cursor.row(), std::nullopt);
        cursor.moveLeft(1);
        EXPECT_EQ(cursor.row(), std::nullopt);
    }
}

}  // namespace
}  // namespace korvane::trend
