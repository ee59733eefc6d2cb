#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <vector>

#include "controls/WindowPlace.h"

namespace korvane::controls {

static void PrintTo(const Area& area, std::ostream* out) {
    *out << signatureOf(std::array{area});
}

namespace {

constexpr Area kScreen{0, 0, 1920, 1040};
constexpr Area kSecond{1920, 100, 1366, 768};

Opening opening(int width, int height) {
    return {width, height, {}, {}, {kScreen, kSecond}, {}};
}

Opening openingFrom(const Area& parent, int width, int height) {
    Opening result = opening(width, height);
    result.parent = parent;
    return result;
}

TEST(WindowPlace, WithoutAParentIsTheMiddleOfTheFirstScreen) {
    EXPECT_EQ(placeOf(opening(1000, 640)), (Area{460, 200, 1000, 640}));
}

TEST(WindowPlace, IsRightOfTheParentWhereThereIsRoom) {
    EXPECT_EQ(placeOf(openingFrom({100, 50, 800, 600}, 700, 400)), (Area{900, 50, 700, 400}));
}

TEST(WindowPlace, IsLeftOfTheParentWhereTheRightSideIsTooNarrow) {
    EXPECT_EQ(placeOf(openingFrom({1000, 50, 800, 600}, 700, 400)), (Area{300, 50, 700, 400}));
}

TEST(WindowPlace, IsBelowOrAboveAWideParent) {
    EXPECT_EQ(placeOf(openingFrom({10, 20, 1900, 600}, 700, 400)), (Area{10, 620, 700, 400}));
    EXPECT_EQ(placeOf(openingFrom({10, 430, 1900, 600}, 700, 400)), (Area{10, 30, 700, 400}));
}

// 1280 and 1340 pixels do not fit side by side into 1920. At the right end 800 by 720 of the parent are covered, at the
// left end 1240 by 720, at the lower end 1280 by 440, at the upper end 1280 by 680.
TEST(WindowPlace, CoversAsLittleOfTheParentAsPossible) {
    EXPECT_EQ(placeOf(openingFrom({100, 40, 1280, 720}, 1340, 720)), (Area{100, 320, 1340, 720}));
}

TEST(WindowPlace, IsOnTheScreenOfTheParent) {
    const Area onSecond{2000, 150, 600, 400};
    EXPECT_EQ(placeOf(openingFrom(onSecond, 500, 300)), (Area{2600, 150, 500, 300}));
    EXPECT_EQ(placeOf(openingFrom({1800, 150, 600, 400}, 500, 300)), (Area{2400, 150, 500, 300}))
        << "the screen that has most of the parent";
}

TEST(WindowPlace, IsNeverLargerThanTheScreen) {
    EXPECT_EQ(placeOf(opening(5000, 4000)), kScreen);
    EXPECT_EQ(placeOf(openingFrom({2000, 150, 600, 400}, 5000, 4000)), kSecond);
    EXPECT_EQ(placeOf(openingFrom({2000, 600, 600, 400}, 300, 500)), (Area{2600, 368, 300, 500})) << "and inside it";
}

TEST(WindowPlace, IsTheRememberedOne) {
    Opening asked = openingFrom({100, 50, 800, 600}, 700, 400);
    asked.remembered = Area{2100, 200, 900, 500};
    EXPECT_EQ(placeOf(asked), (Area{2100, 200, 900, 500}));
}

TEST(WindowPlace, ARememberedOneOutsideTheScreensComesBackIn) {
    Opening asked = opening(700, 400);
    asked.remembered = Area{-50, 900, 900, 500};
    EXPECT_EQ(placeOf(asked), (Area{0, 540, 900, 500}));
    asked.remembered = Area{9000, 9000, 3000, 500};
    EXPECT_EQ(placeOf(asked), (Area{0, 540, 1920, 500}));
}

TEST(WindowPlace, LeavesTheCornersOfOtherWindowsFree) {
    Opening asked = openingFrom({100, 50, 800, 600}, 300, 200);
    asked.others = {{100, 50, 800, 600}, {900, 50, 300, 200}, {932, 82, 300, 200}};
    EXPECT_EQ(placeOf(asked), (Area{964, 114, 300, 200}));
    asked.remembered = Area{900, 50, 300, 200};
    EXPECT_EQ(placeOf(asked), (Area{964, 114, 300, 200}));
}

TEST(WindowPlace, WithoutRoomBesideACornerItIsCovered) {
    Opening asked = openingFrom(kScreen, 1920, 1040);
    asked.others = {kScreen};
    EXPECT_EQ(placeOf(asked), kScreen);
}

TEST(WindowPlace, WithoutAScreenIsWhatTheWindowWants) {
    EXPECT_EQ(placeOf({300, 200, {}, {}, {}, {}}), (Area{0, 0, 300, 200}));
}

TEST(ScreenSignature, DiffersWithSizePlaceAndNumber) {
    const std::vector<Area> two{kScreen, kSecond};
    EXPECT_EQ(signatureOf(two), "1920x1040@0,0 1366x768@1920,100");
    EXPECT_EQ(signatureOf({}), "");
}

}  // namespace
}  // namespace korvane::controls
