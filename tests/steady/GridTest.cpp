#include <gtest/gtest.h>
#include <numeric>

#include "analysis/steady/Grid.h"

namespace korvane::steady {
namespace {

double shareOf(const Corners& corners, std::size_t cell) {
    double share = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
        share += corners.cell[i] == cell ? corners.share[i] : 0.0;
    }
    return share;
}

TEST(SteadyGrid, CountsPlacesFromTheFirstCell) {
    EXPECT_EQ(Grid::placeOf(1000.0, 0.0), (Place{0.0, 0.0}));
    EXPECT_EQ(Grid::placeOf(2250.0, 35.0), (Place{2.5, 3.5}));
}

TEST(SteadyGrid, GivesTheCentreToItsCellAlone) {
    const Grid grid;
    EXPECT_DOUBLE_EQ(shareOf(grid.cornersOf({2.5, 3.5}), 3 * 16 + 2), 1.0);
}

TEST(SteadyGrid, SharesBetweenTheFourCentresAround) {
    const Grid grid;
    const Corners corners = grid.cornersOf({2.75, 3.9});  // a quarter on from column 2, 0.4 on from row 3
    EXPECT_DOUBLE_EQ(shareOf(corners, 3 * 16 + 2), 0.75 * 0.6);
    EXPECT_DOUBLE_EQ(shareOf(corners, 3 * 16 + 3), 0.25 * 0.6);
    EXPECT_DOUBLE_EQ(shareOf(corners, 4 * 16 + 2), 0.75 * 0.4);
    EXPECT_DOUBLE_EQ(shareOf(corners, 4 * 16 + 3), 0.25 * 0.4);
}

TEST(SteadyGrid, HoldsTheOuterCentresToTheEdgeOrGoesOnStraight) {
    const Grid grid;
    EXPECT_DOUBLE_EQ(shareOf(grid.cornersOf({0.1, 0.5}), 0), 1.0);
    EXPECT_DOUBLE_EQ(shareOf(grid.linesOf({0.1, 0.5}), 0), 1.4);
    EXPECT_DOUBLE_EQ(shareOf(grid.linesOf({0.1, 0.5}), 1), -0.4);
    EXPECT_DOUBLE_EQ(shareOf(grid.linesOf({16.0, 9.5}), 159), 1.5);
}

TEST(SteadyGrid, MovesAPlaceIntoTheCellBesideIt) {
    const Grid grid;
    const Place moved = grid.within({2.02, 3.5}, 3 * 16 + 1);
    EXPECT_EQ(grid.cellAt(moved), 3U * 16 + 1);
    EXPECT_EQ(grid.within({6.0, 3.5}, 3 * 16 + 1), (Place{6.0, 3.5}));
    EXPECT_FALSE(grid.touches({6.0, 3.5}, 3 * 16 + 1));
}

TEST(SteadyGrid, EndsWhereTheMapEnds) {
    const Grid grid{.columns = 20, .rows = 16};
    EXPECT_TRUE(grid.contains({20.0, 16.0}));
    EXPECT_FALSE(grid.contains({-0.01, 3.0}));
    EXPECT_FALSE(grid.contains({3.0, 16.01}));
    EXPECT_EQ(grid.cells(), 320U);
}

}  // namespace
}  // namespace korvane::steady
