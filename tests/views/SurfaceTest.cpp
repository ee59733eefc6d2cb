#include <QPolygonF>

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>
#include <set>

#include "views/widgets/charts/AxisLabels.h"
#include "views/widgets/charts/Surface.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;

constexpr Turn kFromAbove{0, 90};

// Seen from above, half the box's width is 100 pixels and its depth three quarters of its width.
Projection fromAbove() {
    return {kFromAbove, {200, 150}, 100};
}

Heights flat(int rows, int columns, double height = 0.5) {
    return {rows, columns, std::vector<double>(static_cast<std::size_t>(rows * columns), height)};
}

QPolygonF polygonOf(std::span<const QPointF> corners) {
    QPolygonF polygon;
    for (const QPointF corner : corners) {
        polygon << corner;
    }
    return polygon;
}

QPointF middleOf(const Face& face) {
    return std::accumulate(face.corners.begin(), face.corners.end(), QPointF()) / 4;
}

std::vector<int> cellsOf(std::span<const Face> faces) {
    std::vector<int> cells;
    for (const auto& face : faces) {
        if (cells.empty() || cells.back() != face.cell) {
            cells.push_back(face.cell);
        }
    }
    return cells;
}

void expectAt(QPointF point, double x, double y) {
    EXPECT_NEAR(point.x(), x, 1e-9);
    EXPECT_NEAR(point.y(), y, 1e-9);
}

TEST(TurnTest, TurnsAllTheWayRound) {
    EXPECT_DOUBLE_EQ((Turn{170, 30}.by(20, 0).azimuth), -170);
    EXPECT_DOUBLE_EQ((Turn{-170, 30}.by(-20, 0).azimuth), 170);
    EXPECT_DOUBLE_EQ((Turn{10, 30}.by(720, 0).azimuth), 10);
}

TEST(TurnTest, StaysAboveTheFloorAndDoesNotTumbleOver) {
    EXPECT_DOUBLE_EQ((Turn{0, 30}.by(0, 100).elevation), 90);
    EXPECT_DOUBLE_EQ((Turn{0, 30}.by(0, -100).elevation), Turn::kLowest);
}

TEST(ProjectionTest, FromAboveColumnsRunRightAndRowsUp) {
    const auto projection = fromAbove();
    expectAt(projection.at({0.5, 0.5, 0.5}), 200, 150);
    expectAt(projection.at({0, 0, 0}), 100, 225);
    expectAt(projection.at({1, 0, 0}), 300, 225);
    expectAt(projection.at({0, 1, 0}), 100, 75);
    expectAt(projection.at({0, 0, 1}), 100, 225);
}

// At azimuth 90 the columns run away from the viewer; the near side has moved from below to the right.
TEST(ProjectionTest, ALargerAzimuthMovesTheNearSideToTheRight) {
    const Projection projection({90, 90}, {200, 150}, 100);
    expectAt(projection.at({0.5, 0, 0.5}), 275, 150);
    expectAt(projection.at({1, 0.5, 0.5}), 200, 50);
}

// At elevation 30 what lies away rises by its half, the sine; what is high by the cosine, 0.8660 of 0.85 of 100.
TEST(ProjectionTest, FromTheSideHeightsRise) {
    const Projection projection({0, 30}, {200, 150}, 100);
    expectAt(projection.at({0.5, 1, 0.5}), 200, 150 - 37.5);
    EXPECT_NEAR(projection.at({0.5, 0.5, 0}).y() - projection.at({0.5, 0.5, 1}).y(), 73.612, 0.001);
}

TEST(ProjectionTest, TheNearSidesFollowTheTurn) {
    const auto near = [](double azimuth) {
        const Projection projection({azimuth, 30}, {}, 1);
        return std::pair(projection.nearX(), projection.nearY());
    };
    EXPECT_EQ(near(-30), std::pair(1.0, 0.0));
    EXPECT_EQ(near(30), std::pair(0.0, 0.0));
    EXPECT_EQ(near(150), std::pair(0.0, 1.0));
    EXPECT_EQ(near(-150), std::pair(1.0, 1.0));
}

TEST(ProjectionTest, TheBoxFitsIntoItsRoomHoweverItIsTurned) {
    const QSizeF room(600, 300);
    for (double elevation = Turn::kLowest; elevation <= Turn::kHighest; elevation += 6) {
        const double scale = Projection::scaleFor(elevation, room);
        for (int azimuth = -180; azimuth < 180; azimuth += 7) {
            const Projection projection({static_cast<double>(azimuth), elevation}, {300, 150}, scale);
            for (int corner = 0; corner < 8; ++corner) {
                const QPointF at = projection.at({static_cast<double>(corner & 1), static_cast<double>(corner >> 1 & 1),
                                                  static_cast<double>(corner >> 2)});
                ASSERT_TRUE(QRectF({-0.001, -0.001}, room + QSizeF(0.002, 0.002)).contains(at))
                    << azimuth << ' ' << elevation;
            }
        }
    }
}

TEST(ProjectionTest, ARoomOfNothingStillHasAScale) {
    EXPECT_GT(Projection::scaleFor(30, {-50, 0}), 0);
}

// Cell 4 of 2 rows by 3 columns is row 1, column 1: half across, three quarters away.
TEST(HeightsTest, ACellsTopIsInItsMiddle) {
    auto heights = flat(2, 3);
    heights.values[4] = 0.25;
    const Place top = heights.topOf(4);
    EXPECT_DOUBLE_EQ(top.x, 0.5);
    EXPECT_DOUBLE_EQ(top.y, 0.75);
    EXPECT_DOUBLE_EQ(top.z, 0.25);
}

TEST(BarsTest, ABarHasTwoSidesAndATop) {
    const auto faces = barsOf(flat(2, 3), fromAbove());
    EXPECT_EQ(faces.size(), 18U);
    EXPECT_EQ(faces[0].lines, (std::array{true, true, true, true}));
}

// With 2 columns a cell is 100 wide and its bar 72; with one row it is 150 deep and its bar 108.
TEST(BarsTest, ABarStandsInTheMiddleOfItsCell) {
    const auto faces = barsOf(flat(1, 2), fromAbove());
    ASSERT_EQ(faces.size(), 6U);
    const QRectF top = polygonOf(faces[2].corners).boundingRect();
    EXPECT_EQ(faces[2].cell, 0);
    expectAt(top.topLeft(), 114, 96);
    expectAt(top.bottomRight(), 186, 204);
}

TEST(BarsTest, NearBarsComeBehindFarOnesWhicheverWayTheMapIsTurned) {
    const auto order = [](double azimuth) { return cellsOf(barsOf(flat(2, 3), Projection({azimuth, 30}, {}, 100))); };
    EXPECT_THAT(order(30), ElementsAre(5, 4, 3, 2, 1, 0));
    EXPECT_THAT(order(-30), ElementsAre(3, 4, 5, 0, 1, 2));
    EXPECT_THAT(order(150), ElementsAre(2, 1, 0, 5, 4, 3));
    EXPECT_THAT(order(-150), ElementsAre(0, 1, 2, 3, 4, 5));
}

// The sides are hidden behind their own top's edges unless they are the two that face the viewer.
TEST(BarsTest, TheSidesShownAreTheNearOnes) {
    for (const double azimuth : {-150.0, -30.0, 30.0, 150.0}) {
        const auto faces = barsOf(flat(1, 1), Projection({azimuth, 30}, {}, 100));
        ASSERT_EQ(faces.size(), 3U);
        for (const std::size_t side : {0U, 1U}) {
            EXPECT_GT(middleOf(faces[side]).y(), middleOf(faces[2]).y()) << azimuth;
        }
        EXPECT_NE(middleOf(faces[0]).x() < 0, middleOf(faces[1]).x() < 0) << azimuth;
    }
}

TEST(BarsTest, TheTopIsLitMoreThanTheSideInTheShade) {
    const auto faces = barsOf(flat(1, 1), Projection({-30, 30}, {}, 100));
    for (const auto& face : faces) {
        EXPECT_GE(face.light, 0);
        EXPECT_LE(face.light, 1);
    }
    EXPECT_GT(faces[2].light, faces[0].light);
}

// 2 rows and 3 columns have 2 quads between their middles, each in 4 pieces.
TEST(SheetTest, EachPieceBelongsToTheNearestCell) {
    const auto faces = sheetOf(flat(2, 3), fromAbove());
    EXPECT_EQ(faces.size(), 8U);
    std::multiset<int> cells;
    for (const auto& face : faces) {
        cells.insert(face.cell);
        const QPointF middle = middleOf(face);
        const int column = static_cast<int>((middle.x() - 100) / (200.0 / 3));
        const int row = static_cast<int>((225 - middle.y()) / 75);
        EXPECT_EQ(face.cell, row * 3 + column);
    }
    EXPECT_THAT(cells, ElementsAre(0, 1, 1, 2, 3, 4, 4, 5));
}

// The middle between heights 0, 0.4, 0.8 and 0 is 0.3; the piece at the corner 0.4 has 0.4, 0.2, 0.3 and 0.6 or 0.2.
TEST(SheetTest, HeightsBetweenTheCellsAreTheirMeans) {
    const Heights heights{2, 2, {0, 0.4, 0.8, 0}};
    const auto faces = sheetOf(heights, fromAbove());
    EXPECT_EQ(faces.size(), 4U);
    for (const auto& face : faces) {
        const double expected = std::array{(0 + 0.2 + 0.3 + 0.4) / 4, (0.4 + 0.2 + 0.3 + 0.2) / 4,
                                           (0.8 + 0.4 + 0.3 + 0.4) / 4, (0 + 0.4 + 0.3 + 0.2) / 4}
                                    .at(static_cast<std::size_t>(face.cell));
        EXPECT_NEAR(face.height, expected, 1e-9) << face.cell;
    }
}

TEST(SheetTest, LinesRunFromCellToCell) {
    const auto projection = fromAbove();
    const auto heights = flat(3, 3);
    std::vector<QPointF> middles;
    for (int cell = 0; cell < 9; ++cell) {
        middles.push_back(projection.at(heights.topOf(cell)));
    }
    const auto touches = [&](QPointF point) {
        return std::any_of(middles.begin(), middles.end(), [&](QPointF middle) {
            return std::hypot(middle.x() - point.x(), middle.y() - point.y()) < 1e-6;
        });
    };
    const auto faces = sheetOf(heights, projection);
    EXPECT_EQ(faces.size(), 16U);
    for (const auto& face : faces) {
        int lines = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const bool meetsCell = touches(face.corners.at(i)) || touches(face.corners.at((i + 1) % 4));
            EXPECT_EQ(face.lines.at(i), meetsCell);
            lines += face.lines.at(i) ? 1 : 0;
        }
        EXPECT_EQ(lines, 2);
    }
}

TEST(SheetTest, NearPiecesComeBehindFarOnes) {
    for (const double azimuth : {-150.0, -30.0, 0.0, 30.0, 150.0}) {
        const Projection projection({azimuth, 30}, {}, 100);
        const auto faces = sheetOf(flat(3, 4), projection);
        // On level ground what is nearer is lower on the screen.
        EXPECT_LT(middleOf(faces.front()).y(), middleOf(faces.back()).y()) << azimuth;
    }
    EXPECT_EQ(sheetOf(flat(2, 2), Projection({-30, 30}, {}, 1)).back().cell, 1);
    EXPECT_EQ(sheetOf(flat(2, 2), Projection({30, 30}, {}, 1)).back().cell, 0);
    EXPECT_EQ(sheetOf(flat(2, 2), Projection({150, 30}, {}, 1)).back().cell, 2);
    EXPECT_EQ(sheetOf(flat(2, 2), Projection({-150, 30}, {}, 1)).back().cell, 3);
}

TEST(SheetTest, ASingleRowOrColumnHasNone) {
    EXPECT_TRUE(sheetOf(flat(1, 5), fromAbove()).empty());
    EXPECT_TRUE(sheetOf(flat(5, 1), fromAbove()).empty());
    EXPECT_TRUE(sheetOf({}, fromAbove()).empty());
    EXPECT_TRUE(barsOf({}, fromAbove()).empty());
}

TEST(CellAtTest, FindsEachCellByItsTop) {
    const auto heights = flat(10, 16);
    const auto projection = fromAbove();
    for (const auto& faces : {barsOf(heights, projection), sheetOf(heights, projection)}) {
        for (int cell = 0; cell < 160; ++cell) {
            // A little off the middle, where four pieces of a sheet meet, and towards the middle of the map.
            const QPointF top = projection.at(heights.topOf(cell));
            EXPECT_EQ(cellAt(faces, top + (QPointF(200, 150) - top) * 0.01), cell);
        }
    }
}

TEST(CellAtTest, BesideTheMapThereIsNone) {
    const auto faces = barsOf(flat(2, 2), fromAbove());
    EXPECT_EQ(cellAt(faces, {10, 10}), std::nullopt);
    EXPECT_EQ(cellAt(faces, {200, 150}), std::nullopt);  // between the bars
    EXPECT_EQ(cellAt({}, {200, 150}), std::nullopt);
}

// A high bar in front of a low one.
TEST(CellAtTest, WhatIsCoveredIsNotFound) {
    const Heights heights{2, 1, {1, 0}};
    const Projection projection({0, 15}, {200, 150}, 100);
    const auto faces = barsOf(heights, projection);
    const QPointF low = projection.at(heights.topOf(1));
    EXPECT_EQ(cellAt(faces, low), 0);
    const Heights turned{2, 1, {0, 1}};
    EXPECT_EQ(cellAt(barsOf(turned, projection), projection.at(turned.topOf(0))), 0);
}

bool overlap(const AxisLabels& one, std::size_t label, const AxisLabels& other, std::size_t second, QSizeF size) {
    return polygonOf(one.outline(label, size)).intersects(polygonOf(other.outline(second, size)));
}

class AxisLabelsTest : public testing::TestWithParam<double> {
protected:
    static constexpr QSizeF kText{64, 11};

    static void expectApart(const AxisLabels& columns, const AxisLabels& rows) {
        for (const auto* labels : {&columns, &rows}) {
            for (std::size_t i = 1; i < labels->places.size(); ++i) {
                EXPECT_FALSE(overlap(*labels, i - 1, *labels, i, kText)) << i;
            }
        }
        for (std::size_t i = 0; i < columns.places.size(); ++i) {
            for (std::size_t j = 0; j < rows.places.size(); ++j) {
                EXPECT_FALSE(overlap(columns, i, rows, j, kText)) << i << ' ' << j;
            }
        }
    }
};

// The elevation is the parameter.
TEST_P(AxisLabelsTest, NoneLiesOnAnotherHoweverTheMapIsTurned) {
    for (int azimuth = -180; azimuth < 180; azimuth += 3) {
        const Projection projection({static_cast<double>(azimuth), GetParam()}, {400, 300}, 240);
        SCOPED_TRACE(azimuth);
        expectApart(labelsOf(Axis::Columns, projection, 20, kText), labelsOf(Axis::Rows, projection, 16, kText));
    }
}

TEST_P(AxisLabelsTest, NoTextStandsOnItsHead) {
    for (int azimuth = -180; azimuth < 180; azimuth += 3) {
        const Projection projection({static_cast<double>(azimuth), GetParam()}, {400, 300}, 240);
        for (const auto axis : {Axis::Columns, Axis::Rows}) {
            EXPECT_LE(std::abs(labelsOf(axis, projection, 16, kText).degrees), 90.001) << azimuth;
        }
    }
}

TEST_P(AxisLabelsTest, TextsRunAwayFromTheFloor) {
    for (int azimuth = -180; azimuth < 180; azimuth += 3) {
        const Projection projection({static_cast<double>(azimuth), GetParam()}, {400, 300}, 240);
        const std::array floor{projection.at({0, 0, 0}), projection.at({1, 0, 0}), projection.at({1, 1, 0}),
                               projection.at({0, 1, 0})};
        for (const auto axis : {Axis::Columns, Axis::Rows}) {
            const auto labels = labelsOf(axis, projection, 16, kText);
            EXPECT_FALSE(labels.places.empty()) << azimuth;
            for (std::size_t i = 0; i < labels.places.size(); ++i) {
                const auto corners = labels.outline(i, kText);
                const QPointF middle = std::accumulate(corners.begin(), corners.end(), QPointF()) / 4;
                EXPECT_FALSE(polygonOf(floor).containsPoint(middle, Qt::WindingFill)) << azimuth;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Elevations, AxisLabelsTest, testing::Values(12, 20, 30, 45, 60, 75, 90));

// From above a column is 400 / 16 = 25 wide: there is room for each text on end.
TEST(AxisLabels, AllAreShownWhereThereIsRoom) {
    const Projection projection(kFromAbove, {400, 300}, 200);
    const auto columns = labelsOf(Axis::Columns, projection, 16, {64, 11});
    ASSERT_EQ(columns.numbers.size(), 16U);
    EXPECT_EQ(columns.numbers[3], 3);
    EXPECT_NEAR(columns.degrees, 90, 1e-9);
    EXPECT_FALSE(columns.endsAtPlace);
    EXPECT_NEAR(columns.places[0].x(), 212.5, 1e-9);
    EXPECT_GT(columns.places[0].y(), 450);
}

// Rows of 300 / 100 = 3 pixels: every fifth has room for 12 * 1.15 = 13.8.
TEST(AxisLabels, WhereThereIsNoRoomTheyAreLeftOutRegularly) {
    const Projection projection(kFromAbove, {400, 300}, 200);
    const auto rows = labelsOf(Axis::Rows, projection, 100, {64, 12});
    ASSERT_EQ(rows.numbers.size(), 20U);
    EXPECT_EQ(rows.numbers[0], 0);
    EXPECT_EQ(rows.numbers[1], 5);
    EXPECT_EQ(rows.numbers[19], 95);
}

TEST(AxisLabels, NoneForNothing) {
    EXPECT_TRUE(labelsOf(Axis::Rows, fromAbove(), 0, {64, 12}).numbers.empty());
}

TEST(HeightScaleTest, HasRoundNumbersUpToTheByte) {
    const auto check = [](double largest, double step, double top) {
        EXPECT_DOUBLE_EQ(heightScaleFor(largest).step, step) << largest;
        EXPECT_DOUBLE_EQ(heightScaleFor(largest).top, top) << largest;
    };
    check(0, 2, 10);
    check(9, 2, 10);
    check(13, 5, 15);
    check(60, 10, 60);
    check(61, 20, 80);
    check(120, 20, 120);
    check(121, 25, 125);
    check(151, 50, 200);
    check(255, 50, 255);
}

}  // namespace
}  // namespace korvane::views
