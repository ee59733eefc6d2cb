#include <gtest/gtest.h>
#include <limits>

#include "live/readout/BigTextShape.h"

namespace korvane::live {

inline std::ostream& operator<<(std::ostream& out, const BigTextShape& shape) {
    return out << shape.width << " x " << shape.height << ", font " << shape.fontSize;
}

namespace {

// 2500 * 3 = 7500 is below the width: 7500 + 350 it is, and 7500 / 60 = 2500 / 20 = 125.
TEST(BigTextShape, AWindowOfTheRightShapeKeepsIt) {
    EXPECT_EQ(shapeAround(7850, 3750), (BigTextShape{7850, 3750, 125}));
}

// 1750 * 3 = 5250 is below 9000: the width becomes 5250 + 350; the font 5250 / 60 = 87.5, in whole points.
TEST(BigTextShape, TheHeightRulesAWideWindow) {
    EXPECT_EQ(shapeAround(9000, 3000), (BigTextShape{5600, 3000, 87}));
}

// 2750 * 3 = 8250 is not below 6000: the height becomes (6000 - 350) / 3 + 1250 = 3133.3; 1883 / 20 = 94.1.
TEST(BigTextShape, TheWidthRulesAHighWindow) {
    EXPECT_EQ(shapeAround(6000, 4000), (BigTextShape{6000, 3133, 94}));
}

// (6001 - 350) / 3 = 1883.7.
TEST(BigTextShape, AThirdIsRounded) {
    EXPECT_EQ(shapeAround(6001, 9000), (BigTextShape{6001, 3134, 94}));
}

// 2000 * 3 = 6000 is below 6001 and 6200, but not below 6000.
TEST(BigTextShape, TheWholeWidthIsComparedNotThatOfTheFigures) {
    EXPECT_EQ(shapeAround(6001, 3250), (BigTextShape{6350, 3250, 100}));
    EXPECT_EQ(shapeAround(6200, 3250), (BigTextShape{6350, 3250, 100}));
    EXPECT_EQ(shapeAround(6000, 3250), (BigTextShape{6000, 3133, 94}));
}

TEST(BigTextShape, TheFiguresAreThreeTimesAsWideAsHighAfterAnyDrag) {
    for (int width = 500; width < 30000; width += 937) {
        for (int height = 1300; height < 20000; height += 811) {
            const auto shape = shapeAround(width, height);
            EXPECT_NEAR(shape.figuresWidth(), 3 * shape.figuresHeight(), 2) << width << " " << height;
            EXPECT_EQ(shape.width - 350, shape.figuresWidth());
            EXPECT_EQ(shape.height - 1250, shape.figuresHeight());
        }
    }
}

TEST(BigTextShape, TooSmallASizeLeavesTheSmallestFigures) {
    for (const int size : {std::numeric_limits<int>::min(), -1, 0, 350}) {
        EXPECT_EQ(shapeAround(size, size), (BigTextShape{410, 1270, 1})) << size;
    }
    EXPECT_EQ(shapeAround(9000, 1250), (BigTextShape{410, 1270, 1}));
}

// Ten million twips are taken; (10'000'000 - 350) / 3 + 1250 = 3334466.7.
TEST(BigTextShape, AnAbsurdSizeIsBounded) {
    const int most = std::numeric_limits<int>::max();
    EXPECT_EQ(shapeAround(most, most).width, 10'000'000);
    EXPECT_EQ(shapeAround(most, most).height, 3'334'467);
}

}  // namespace
}  // namespace korvane::live
