#include "EditingBench.h"
#include "maps/grid/Selection.h"

namespace korvane::maps {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Block = std::pair<int, int>;

constexpr int kX = 88;
constexpr Block kNone{-1, -1};

std::vector<int> run(int first, int last) {
    std::vector<int> cells;
    for (int cell = first; cell <= last; ++cell) {
        cells.push_back(cell);
    }
    return cells;
}

class SelectionTest : public GridEditingTest {
protected:
    // What pressing Shift on the cells one by one selects, the focus aside.
    template <class Extend>
    Block extended(Extend extend, std::initializer_list<int> cells) {
        forgetBlock(window_.ign);
        for (const int cell : cells) {
            static_cast<void>(extend(window_.ign, cell));
        }
        return block(window_.ign);
    }
};

TEST_F(SelectionTest, ARunGrowsForwards) {
    EXPECT_EQ(extended(extendRun, {10}), (Block{10, -1}));
    EXPECT_EQ(extended(extendRun, {10, 10}), (Block{10, -1}));
    EXPECT_EQ(extended(extendRun, {10, 12}), (Block{10, 12}));
    EXPECT_EQ(extended(extendRun, {10, 12, 20}), (Block{10, 20}));
    EXPECT_EQ(extended(extendRun, {10, 20, 12}), (Block{10, 12}));
}

TEST_F(SelectionTest, TheCellBehindTheFirstMovesTheStartOfARun) {
    EXPECT_EQ(extended(extendRun, {10, 11}), (Block{11, -1}));
    EXPECT_EQ(extended(extendRun, {10, 20, 11}), (Block{11, 20}));
    EXPECT_EQ(extended(extendRunByStep, {10, 11}), (Block{10, 11}));
}

TEST_F(SelectionTest, ACellBeforeTheFirstEndsTheRunWhereItBegan) {
    EXPECT_EQ(extended(extendRun, {10, 8}), (Block{8, 10}));
    EXPECT_EQ(extended(extendRun, {10, 20, 8}), (Block{8, 10}));
}

TEST_F(SelectionTest, ARectangleGrowsAtBothEnds) {
    EXPECT_EQ(extended(extendRectangle, {10}), (Block{10, -1}));
    EXPECT_EQ(extended(extendRectangle, {10, 10}), (Block{10, -1}));
    EXPECT_EQ(extended(extendRectangle, {10, 11}), (Block{10, 11}));
    EXPECT_EQ(extended(extendRectangle, {10, 8}), (Block{8, 10}));
    EXPECT_EQ(extended(extendRectangle, {10, 20, 8}), (Block{8, 20}));
    EXPECT_EQ(extended(extendRectangle, {10, 20, 12}), (Block{10, 12}));
}

TEST_F(SelectionTest, OnlyARealExtensionIsPainted) {
    forgetBlock(window_.ign);
    EXPECT_FALSE(extendRun(window_.ign, 10));
    EXPECT_FALSE(extendRun(window_.ign, 10));
    EXPECT_FALSE(extendRun(window_.ign, 11));
    EXPECT_TRUE(extendRun(window_.ign, 20));
    forgetBlock(window_.fuel);
    EXPECT_FALSE(extendRectangle(window_.fuel, 10));
    EXPECT_FALSE(extendRectangle(window_.fuel, 10));
    EXPECT_TRUE(extendRectangle(window_.fuel, 11));
    EXPECT_TRUE(extendRectangle(window_.fuel, 9));
}

TEST_F(SelectionTest, ARectangleIsGreenBetweenItsColumns) {
    selectBlock(window_.fuel, 17, 51);
    paintRectangle(window_.fuel);
    EXPECT_THAT(green(window_.fuel), ElementsAre(17, 18, 19, 33, 34, 35, 49, 50, 51));
    EXPECT_EQ(window_.fuel(18).ToolTipText.get(), "1");
    EXPECT_EQ(window_.fuel(20).ToolTipText.get(), "0");
    EXPECT_EQ(window_.fuel(20).BackColor, kWhite);
    selectBlock(window_.fuel, 14, 31);  // the last column counts as 16
    paintRectangle(window_.fuel);
    EXPECT_THAT(green(window_.fuel), ElementsAre(14, 15, 30, 31));
    selectBlock(window_.fuel, 20, 33);  // ends left of where it begins
    paintRectangle(window_.fuel);
    EXPECT_THAT(green(window_.fuel), IsEmpty());
}

TEST_F(LargeGridEditingTest, ARectangleHasTwentyColumns) {
    selectBlock(window_.fuel, 38, 319);
    paintRectangle(window_.fuel);
    EXPECT_EQ(green(window_.fuel).size(), 30U);
    EXPECT_EQ(green(window_.fuel).front(), 38);
    EXPECT_EQ(green(window_.fuel).back(), 319);
}

TEST_F(SelectionTest, FuelBlockIsChosenWithTheMouse) {
    click(window_.fuel, 17, kShift);
    EXPECT_EQ(window_.Caption.get(), "alku 18 Loppu 0 ");
    EXPECT_THAT(green(window_.fuel), IsEmpty());
    click(window_.fuel, 34, kShift);
    EXPECT_EQ(window_.Caption.get(), "alku 18 Loppu 35 ");
    EXPECT_EQ(block(window_.fuel), (Block{17, 34}));
    EXPECT_THAT(green(window_.fuel), ElementsAre(17, 18, 33));
    EXPECT_EQ(window_.fuel(34).BackColor, kYellow);
}

TEST_F(SelectionTest, FuelBlockActsOnTheRunAndNotOnlyOnTheRectangle) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    key(window_.fuel, 34, kKeyPlus);
    for (int cell = 0; cell < 160; ++cell) {
        EXPECT_EQ(core::checked(tables_.FuelMapOut, cell), cell >= 17 && cell <= 34 ? 1 : 0) << cell;
    }
    EXPECT_EQ(block(window_.fuel), (Block{17, 34}));
}

TEST_F(SelectionTest, EveryFuelKeyTellsTheBlockThatStands) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    window_.Caption = "x";
    key(window_.fuel, 34, kKeyPlus);
    EXPECT_EQ(window_.Caption.get(), "alku 18 Loppu 35 ");
}

TEST_F(SelectionTest, FuelBlockIsChosenWithShiftAndArrows) {
    key(window_.fuel, 17, kKeyShift, kShift);
    key(window_.fuel, 17, kKeyRight, kShift);
    EXPECT_EQ(block(window_.fuel), (Block{17, 18}));
    key(window_.fuel, 18, kKeyRight, kShift);
    key(window_.fuel, 19, kKeyDown, kShift);
    EXPECT_EQ(focusIn(window_.fuel), 35);
    EXPECT_EQ(block(window_.fuel), (Block{17, 35}));
    EXPECT_THAT(green(window_.fuel), ElementsAre(17, 18, 19, 33, 34, 35));
    EXPECT_EQ(window_.Caption.get(), "alku 18 Loppu 36 ");
}

TEST_F(SelectionTest, APlainKeyEndsTheFuelBlockAndItsColour) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    key(window_.fuel, 34, kX);
    EXPECT_EQ(block(window_.fuel), kNone);
    EXPECT_THAT(green(window_.fuel), IsEmpty());
    EXPECT_EQ(window_.Caption.get(), "alku 0 Loppu 0 ");
}

TEST_F(SelectionTest, APlainClickEndsTheFuelBlock) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    click(window_.fuel, 90);
    EXPECT_EQ(block(window_.fuel), kNone);
    EXPECT_THAT(green(window_.fuel), IsEmpty());
    EXPECT_EQ(window_.fuel(90).BackColor, kYellow);
}

TEST_F(SelectionTest, ReleasingAKeyKeepsTheFuelBlock) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    window_.fuel(34).keyUp(kKeyUp, kControl);
    window_.fuel(34).keyUp(kKeyShift, kNoShift);
    window_.fuel(34).keyUp(kX, kNoShift);
    EXPECT_EQ(block(window_.fuel), (Block{17, 34}));
    EXPECT_FALSE(green(window_.fuel).empty());
    forgetBlock(window_.fuel);
    click(window_.fuel, 17, kShift);
    window_.fuel(17).keyUp(kKeyUp, kControl);
    EXPECT_EQ(block(window_.fuel), (Block{17, -1}));
}

TEST_F(SelectionTest, ReleasingShiftSelectsNothing) {
    window_.setFocus(&window_.fuel(3));
    window_.fuel(3).keyUp(kKeyShift, kShift);
    EXPECT_EQ(block(window_.fuel), kNone);
    window_.fuel(3).keyUp(kX, kShift);
    EXPECT_EQ(block(window_.fuel), (Block{3, -1}));
}

TEST_F(SelectionTest, TheFocusAloneLeavesAFuelBlock) {
    click(window_.fuel, 17, kShift);
    click(window_.fuel, 34, kShift);
    window_.setFocus(&window_.fuel(100));
    EXPECT_EQ(block(window_.fuel), (Block{17, 34}));
    EXPECT_THAT(green(window_.fuel), ElementsAre(17, 18, 33));
}

TEST_F(SelectionTest, IgnitionAndPwmBlocksAreChosenWithShiftAndArrows) {
    for (auto* grid : {&window_.ign, &window_.pwm}) {
        key(*grid, 66, kKeyShift, kShift);
        EXPECT_EQ(block(*grid), (Block{66, -1}));
        key(*grid, 66, kKeyDown, kShift);
        EXPECT_EQ(focusIn(*grid), 82);
        EXPECT_EQ(block(*grid), (Block{66, 82}));
        EXPECT_EQ(green(*grid), run(66, 81));
        EXPECT_EQ((*grid)(82).BackColor, kYellow);
        EXPECT_EQ((*grid)(82).ToolTipText.get(), "1");
        key(*grid, 82, kKeyLeft, kShift);
        EXPECT_EQ(block(*grid), (Block{66, 81}));
        key(*grid, 81, kKeyDown, kShift);
        EXPECT_EQ(block(*grid), (Block{66, 97}));
        EXPECT_EQ(green(*grid), run(66, 96));
    }
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps ");
}

TEST_F(SelectionTest, AStepExtendsAlongARowToo) {
    for (int cell = 66; cell < 70; ++cell) {
        key(window_.ign, cell, kKeyRight, kShift);
        EXPECT_EQ(block(window_.ign), (Block{66, cell + 1}));
    }
    key(window_.ign, 70, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 65, 7), ElementsAre(0, 1, 1, 1, 1, 1, 0));
}

TEST_F(SelectionTest, AStepBackwardsBeginsTheRunAtTheCellThatItReaches) {
    key(window_.ign, 66, kKeyUp, kShift);
    EXPECT_EQ(block(window_.ign), (Block{50, 66}));
    EXPECT_EQ(green(window_.ign), run(51, 66));
}

TEST_F(SelectionTest, PressingShiftBehindTheFirstCellMovesTheStart) {
    key(window_.ign, 66, kKeyRight, kShift);
    EXPECT_EQ(block(window_.ign), (Block{66, 67}));
    key(window_.ign, 67, kKeyShift, kShift);
    EXPECT_EQ(block(window_.ign), (Block{67, 67}));
}

TEST_F(SelectionTest, FocusFromAnywhereElseEndsAnIgnitionBlock) {
    for (const bool fromFuel : {false, true}) {
        key(window_.ign, 66, kKeyDown, kShift);
        ASSERT_EQ(block(window_.ign), (Block{66, 82}));
        if (fromFuel) {
            window_.setFocus(&window_.fuel(3));
            EXPECT_EQ(block(window_.ign), (Block{66, 82}));
        }
        window_.setFocus(&window_.ign(90));
        EXPECT_EQ(block(window_.ign), kNone);
        EXPECT_THAT(green(window_.ign), IsEmpty());
        EXPECT_EQ(window_.ign(90).BackColor, kYellow);
    }
}

TEST_F(SelectionTest, APlainArrowEndsAnIgnitionBlock) {
    key(window_.ign, 66, kKeyDown, kShift);
    key(window_.ign, 82, kKeyLeft);
    EXPECT_EQ(block(window_.ign), kNone);
    key(window_.ign, 81, kKeyPlus);
    EXPECT_EQ(tables_.IgnMapOut[81], 1);
    EXPECT_EQ(tables_.IgnMapOut[80], 0);
}

TEST_F(SelectionTest, APlainKeyEndsAnIgnitionBlockButNotItsColour) {
    key(window_.ign, 66, kKeyDown, kShift);
    key(window_.ign, 82, kX);
    EXPECT_EQ(block(window_.ign), kNone);
    EXPECT_EQ(green(window_.ign), run(66, 81));
}

TEST_F(SelectionTest, TheMouseChoosesNoIgnitionBlockInASmallWindow) {
    click(window_.ign, 66, kShift);
    click(window_.ign, 80, kShift);
    window_.ign(80).keyUp(kX, kShift);
    EXPECT_EQ(block(window_.ign), kNone);
}

TEST_F(LargeGridEditingTest, TheMouseChoosesAnIgnitionBlock) {
    click(window_.ign, 66, kShift);
    EXPECT_EQ(block(window_.ign), (Block{66, -1}));
    click(window_.ign, 80, kShift);
    EXPECT_EQ(block(window_.ign), (Block{66, 80}));
    EXPECT_EQ(green(window_.ign), run(66, 79));
    EXPECT_EQ(window_.ign(80).BackColor, kYellow);
    click(window_.ign, 66, kShift);
    EXPECT_EQ(block(window_.ign), (Block{66, 80}));
    EXPECT_EQ(green(window_.ign), run(67, 80));
    key(window_.ign, 66, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 65, 17), ElementsAre(0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0));
}

TEST_F(LargeGridEditingTest, TheMouseMovesTheStartToTheCellBehindIt) {
    click(window_.ign, 66, kShift);
    click(window_.ign, 67, kShift);
    EXPECT_EQ(block(window_.ign), (Block{67, -1}));
}

TEST_F(LargeGridEditingTest, APlainClickEndsAnIgnitionBlockForGood) {
    click(window_.ign, 66, kShift);
    click(window_.ign, 80, kShift);
    click(window_.ign, 90);
    EXPECT_EQ(block(window_.ign), kNone);
    EXPECT_THAT(green(window_.ign), IsEmpty());
    click(window_.ign, 100, kShift);
    EXPECT_EQ(block(window_.ign), (Block{100, -1}));
}

TEST_F(LargeGridEditingTest, AnIgnitionBlockSurvivesReleasedKeys) {
    key(window_.ign, 66, kKeyRight, kShift);
    key(window_.ign, 67, kKeyRight, kShift);
    EXPECT_EQ(block(window_.ign), (Block{66, 68}));
    key(window_.ign, 68, kKeyUp, kControl);
    key(window_.ign, 68, kKeyUp, kControl);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 65, 5), ElementsAre(0, 2, 2, 2, 0));
    EXPECT_EQ(block(window_.ign), (Block{66, 68}));
}

TEST_F(LargeGridEditingTest, PwmBlocksAreChosenByKeysAlone) {
    click(window_.pwm, 66, kShift);
    EXPECT_EQ(block(window_.pwm), kNone);
    key(window_.pwm, 66, kKeyDown, kShift);
    EXPECT_EQ(block(window_.pwm), (Block{66, 86}));
}

}  // namespace
}  // namespace korvane::maps
