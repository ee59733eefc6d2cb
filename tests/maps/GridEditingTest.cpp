#include "EditingBench.h"
#include "maps/grid/EditRules.h"

namespace korvane::maps {
namespace {

using controls::kGreen;
using controls::kKeyMinus;
using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kA = 65;
constexpr int kL = 76;
constexpr int kX = 88;

TEST_F(GridEditingTest, PlusAndMinusStepOneCell) {
    tables_.FuelMapOut[3] = 10;
    key(window_.fuel, 3, kKeyPlus);
    EXPECT_EQ(tables_.FuelMapOut[3], 11);
    EXPECT_EQ(window_.fuel(3).ToolTipText.get().substr(0, 3), " 11");
    EXPECT_EQ(window_.fuel(3).ForeColor, controls::kBlue);
    key(window_.ign, 3, kKeyPlus);
    EXPECT_EQ(window_.ign(3).Text.get(), "0.2");
    key(window_.ign, 3, kKeyPlus);
    key(window_.ign, 3, kKeyMinus);
    EXPECT_EQ(tables_.IgnMapOut[3], 1);
    EXPECT_EQ(tables_.FuelMapIn[3], 0);
    EXPECT_EQ(tables_.IgnMapIn[3], 0);
    EXPECT_TRUE(window_.fuel(3).Locked);
    EXPECT_TRUE(window_.ign(3).Locked);
}

TEST_F(GridEditingTest, StepsStayPutAtTheEnds) {
    tables_.FuelMapOut[3] = 255;
    tables_.IgnMapOut[3] = 255;
    key(window_.fuel, 3, kKeyPlus);
    key(window_.ign, 3, kKeyPlus);
    key(window_.fuel, 4, kKeyMinus);
    key(window_.ign, 4, kKeyMinus);
    key(window_.pwm, 4, kKeyMinus);
    EXPECT_EQ(tables_.FuelMapOut[3], 255);
    EXPECT_EQ(tables_.IgnMapOut[3], 255);
    EXPECT_EQ(tables_.FuelMapOut[4], 0);
    EXPECT_EQ(tables_.IgnMapOut[4], 0);
    EXPECT_EQ(tables_.PwmMapOut[4], 0);
}

TEST_F(GridEditingTest, ControlTurnsVerticalArrowsIntoSteps) {
    tables_.FuelMapOut[40] = 5;
    key(window_.fuel, 40, kKeyUp, kControl);
    EXPECT_EQ(tables_.FuelMapOut[40], 6);
    EXPECT_EQ(focusIn(window_.fuel), 40);
    key(window_.fuel, 40, kKeyDown, kControl);
    key(window_.fuel, 40, kKeyDown, kControl);
    EXPECT_EQ(tables_.FuelMapOut[40], 4);
    key(window_.ign, 40, kKeyUp, kControl);
    EXPECT_EQ(tables_.IgnMapOut[40], 1);
    EXPECT_EQ(focusIn(window_.ign), 40);
}

TEST_F(GridEditingTest, PwmStepsStopAt225) {
    tables_.PwmMapOut[70] = 224;
    key(window_.pwm, 70, kKeyPlus);
    key(window_.pwm, 70, kKeyPlus);
    EXPECT_EQ(tables_.PwmMapOut[70], 225);
    tables_.PwmMapOut[71] = 240;
    key(window_.pwm, 71, kKeyPlus);
    EXPECT_EQ(tables_.PwmMapOut[71], 240);
}

TEST_F(GridEditingTest, PwmStepRedrawsThatTextAloneInFourDecimals) {
    tables_.PwmMapOut[70] = 0;
    tables_.PwmMapOut[71] = 9;
    frm3Dmap_.open();
    key(window_.pwm, 70, kKeyPlus);
    EXPECT_EQ(window_.pwm(70).Text.get(), "0.0139");  // 1 / 72 = 0.013888
    EXPECT_EQ(window_.pwm(70).ForeColor, window_.pwm(71).ForeColor);
    EXPECT_EQ(window_.pwm(70).ToolTipText.get(), "");
    EXPECT_EQ(window_.pwm(71).Text.get(), "");
    EXPECT_TRUE(window_.pwm(70).Locked);
    EXPECT_EQ(frm3Dmap_.MSChart1.dataAt(4, 6), "1");
}

TEST_F(GridEditingTest, FuelStepKnowsTheOffsetInCounts) {
    tables_.InjOff_type = 1;
    window_.txtMisc(2).Text = "10";
    const auto stepped = [&](std::uint8_t from) {
        tables_.FuelMapOut[3] = from;
        key(window_.fuel, 3, kKeyPlus);
        return int{tables_.FuelMapOut[3]};
    };
    EXPECT_EQ(stepped(244), 245);
    EXPECT_EQ(stepped(245), 245);  // 255 with the offset
    EXPECT_EQ(stepped(246), 247);  // beyond is not equal
    EXPECT_EQ(stepped(255), 255);  // no byte holds more
    tables_.InjOff_type = 0;
    EXPECT_EQ(stepped(245), 246);
}

TEST(Plus, InABlockStopsWhereTheOffsetMakes255) {
    EXPECT_EQ(raisedWithOffset(244, 10), 245);
    EXPECT_EQ(raisedWithOffset(245, 10), 245);
    EXPECT_EQ(raisedWithOffset(250, 10), 245);
    EXPECT_EQ(raisedWithOffset(255, 0), 255);
    EXPECT_EQ(raisedWithOffset(255, -10), 255);
    EXPECT_EQ(raisedWithOffset(3, 300), 0);
    EXPECT_EQ(steppedWithOffset(245, 10), 245);
    EXPECT_EQ(steppedWithOffset(250, 10), 251);
    EXPECT_EQ(steppedWithOffset(255, 10), 255);
}

TEST_F(GridEditingTest, ACellThatTheGridHasNotGotChangesNothing) {
    for (const int cell : {-1, 160, 320}) {
        using Press = void (BenchWindow::*)(int, int, int);
        for (const Press press : std::initializer_list<Press>{&BenchWindow::fuelKeyDown, &BenchWindow::ignKeyDown,
                                                              &BenchWindow::pwmKeyDown}) {
            try {
                (window_.*press)(cell, kKeyPlus, kNoShift);
                ADD_FAILURE() << cell;
            } catch (const platform::RuntimeError& error) {
                EXPECT_EQ(error.number(), 9);
            }
        }
    }
    EXPECT_THAT(tables_.FuelMapOut, testing::Each(0));
    EXPECT_THAT(tables_.IgnMapOut, testing::Each(0));
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner, Maps ");
}

TEST_F(GridEditingTest, ArrowsMoveTheFocus) {
    for (auto* grid : {&window_.fuel, &window_.ign, &window_.pwm}) {
        key(*grid, 50, kKeyLeft);
        EXPECT_EQ(focusIn(*grid), 49);
        key(*grid, 49, kKeyUp);
        EXPECT_EQ(focusIn(*grid), 33);
        key(*grid, 33, kKeyRight);
        EXPECT_EQ(focusIn(*grid), 34);
        key(*grid, 34, kKeyDown);
        EXPECT_EQ(focusIn(*grid), 50);
    }
}

TEST_F(GridEditingTest, TheFocusStopsAtTheEdges) {
    for (auto* grid : {&window_.fuel, &window_.ign, &window_.pwm}) {
        for (const auto& [cell, keyCode] : {std::pair{16, kKeyLeft},
                                            {0, kKeyLeft},
                                            {31, kKeyRight},
                                            {159, kKeyRight},
                                            {15, kKeyUp},
                                            {144, kKeyDown}}) {
            key(*grid, cell, keyCode);
            EXPECT_EQ(focusIn(*grid), cell);
        }
        key(*grid, 143, kKeyDown);
        EXPECT_EQ(focusIn(*grid), 159);
        key(*grid, 16, kKeyUp);
        EXPECT_EQ(focusIn(*grid), 0);
    }
}

TEST_F(LargeGridEditingTest, TheFocusGoesByTwentyColumns) {
    for (const auto& [from, keyCode, to] : {std::tuple{50, kKeyDown, 70},
                                            {39, kKeyRight, 39},
                                            {40, kKeyLeft, 40},
                                            {300, kKeyDown, 300},
                                            {299, kKeyDown, 319},
                                            {19, kKeyUp, 19}}) {
        key(window_.ign, from, keyCode);
        EXPECT_EQ(focusIn(window_.ign), to) << "from " << from;
    }
}

TEST_F(GridEditingTest, TheFocusIsYellowAndLeavesWhite) {
    for (auto* grid : {&window_.fuel, &window_.ign, &window_.pwm}) {
        window_.setFocus(&(*grid)(80));
        EXPECT_EQ((*grid)(80).BackColor, kYellow);
        window_.setFocus(&(*grid)(81));
        EXPECT_EQ((*grid)(80).BackColor, kWhite);
        EXPECT_EQ((*grid)(81).BackColor, kYellow);
    }
}

TEST_F(GridEditingTest, ADisabledCellTakesNoFocus) {
    window_.pwm(63).Enabled = false;
    key(window_.pwm, 64 + 15, kKeyUp, kShift);
    EXPECT_EQ(focusIn(window_.pwm), 79);
    EXPECT_EQ(block(window_.pwm), (std::pair{79, -1}));
}

TEST_F(GridEditingTest, RealtimeChangesGoOutAsOneFrame) {
    openPort();
    window_.chkOnlineChanges.Value = 1;
    tables_.FuelMapOut[17] = 99;
    key(window_.fuel, 17, kKeyPlus);
    EXPECT_THAT(sent(), ElementsAre('g', 17, 17, 100, 100, 0x98));
    tables_.IgnMapOut[159] = 1;
    key(window_.ign, 159, kKeyMinus);
    EXPECT_THAT(sent(), ElementsAre('i', 159, 159, 0, 0, 0x96));
    key(window_.pwm, 159, kKeyPlus);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(GridEditingTest, AStepAtTheStopIsSentToo) {
    openPort();
    window_.chkOnlineChanges.Value = 1;
    key(window_.ign, 2, kKeyMinus);
    EXPECT_THAT(sent(), ElementsAre('i', 2, 2, 0, 0, 0x96));
}

TEST_F(GridEditingTest, NothingIsSentWithoutATickOrAStep) {
    openPort();
    key(window_.fuel, 17, kKeyPlus);
    window_.chkOnlineChanges.Value = 1;
    key(window_.fuel, 17, kKeyRight);
    key(window_.ign, 17, kKeyRight);
    key(window_.fuel, 17, kX);
    selectBlock(window_.fuel, 1, 20);
    key(window_.fuel, 17, kKeyPlus);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(GridEditingTest, OnAClosedPortTheEditStands) {
    window_.chkOnlineChanges.Value = 1;
    key(window_.fuel, 17, kKeyPlus);
    key(window_.ign, 17, kKeyPlus);
    EXPECT_EQ(tables_.FuelMapOut[17], 1);
    EXPECT_EQ(tables_.IgnMapOut[17], 1);
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(GridEditingTest, ThePortMayCloseWhileTheGridIsRedrawn) {
    openPort();
    window_.chkOnlineChanges.Value = 1;
    const auto alarm = machine_.pump.makeAlarm([&] { main_.MSComm1.setPortOpen(false); });
    alarm->callAt(machine_.pump.now());
    key(window_.fuel, 17, kKeyPlus);
    EXPECT_EQ(tables_.FuelMapOut[17], 1);
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(LargeGridEditingTest, ACellThatTheFrameCannotNameIsNotSent) {
    openPort();
    window_.chkOnlineChanges.Value = 1;
    key(window_.fuel, 255, kKeyPlus);
    EXPECT_THAT(sent(), ElementsAre('g', 255, 255, 1, 1, 0x98));
    key(window_.fuel, 256, kKeyPlus);
    key(window_.ign, 319, kKeyPlus);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(tables_.FuelMapOut[256], 1);
    EXPECT_EQ(tables_.IgnMapOut[319], 1);
}

TEST_F(GridEditingTest, PlusAndMinusMoveTheWholeRunAndKeepTheSelection) {
    tables_.IgnMapOut[19] = 254;
    tables_.IgnMapOut[22] = 9;
    window_.setFocus(&window_.ign(19));
    selectBlock(window_.ign, 19, 21);
    key(window_.ign, 19, kKeyPlus);
    key(window_.ign, 19, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 18, 5), ElementsAre(0, 255, 2, 2, 9));
    EXPECT_EQ(window_.ign(20).Text.get(), "0.4");
    key(window_.ign, 19, kKeyMinus);
    key(window_.ign, 19, kKeyDown, kControl);
    key(window_.ign, 19, kKeyMinus);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 18, 5), ElementsAre(0, 252, 0, 0, 9));
    key(window_.ign, 19, kKeyUp, kControl);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 18, 5), ElementsAre(0, 253, 1, 1, 9));
    EXPECT_EQ(block(window_.ign), (std::pair{19, 21}));
}

TEST_F(GridEditingTest, ASpreadsTheFirstValue) {
    tables_.PwmMapOut[99] = 7;
    tables_.PwmMapOut[100] = 40;
    tables_.PwmMapOut[103] = 8;
    window_.setFocus(&window_.pwm(80));
    selectBlock(window_.pwm, 100, 102);
    key(window_.pwm, 80, kA);
    EXPECT_THAT(valuesOf(tables_.PwmMapOut, 99, 5), ElementsAre(7, 40, 40, 40, 8));
    EXPECT_EQ(window_.pwm(102).Text.get(), "0.555");  // 40 / 72
    EXPECT_EQ(focusIn(window_.pwm), 80);
}

TEST_F(GridEditingTest, PwmBlockGoesTo255) {
    tables_.PwmMapOut[100] = 225;
    tables_.PwmMapOut[101] = 255;
    window_.setFocus(&window_.pwm(80));
    selectBlock(window_.pwm, 100, 101);
    key(window_.pwm, 80, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.PwmMapOut, 100, 2), ElementsAre(226, 255));
}

TEST_F(GridEditingTest, LevellingRoundsDown) {
    tables_.FuelMapOut[4] = 10;
    tables_.FuelMapOut[7] = 20;
    window_.setFocus(&window_.fuel(4));
    selectBlock(window_.fuel, 4, 7);
    key(window_.fuel, 4, kL);
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 3, 6), ElementsAre(0, 10, 13, 16, 20, 0));
    tables_.FuelMapOut[4] = 20;
    tables_.FuelMapOut[7] = 10;
    key(window_.fuel, 4, kL);  // -3.33 and -6.67 become -4 and -7
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 4, 4), ElementsAre(20, 16, 13, 10));
    EXPECT_EQ(block(window_.fuel), (std::pair{4, 7}));
}

TEST_F(GridEditingTest, LevellingTwoCellsOrABlockTurnedOverChangesNothing) {
    tables_.IgnMapOut[4] = 10;
    tables_.IgnMapOut[5] = 20;
    window_.setFocus(&window_.ign(4));
    for (const auto& [first, last] : {std::pair{4, 5}, {4, 4}, {5, 4}}) {
        selectBlock(window_.ign, first, last);
        key(window_.ign, 4, kL);
        EXPECT_THAT(valuesOf(tables_.IgnMapOut, 3, 4), ElementsAre(0, 10, 20, 0));
    }
}

TEST_F(GridEditingTest, FuelBlockStopsByTheOffsetInCounts) {
    tables_.InjOff_type = 1;
    window_.txtMisc(2).Text = "10";
    tables_.FuelMapOut[4] = 244;
    tables_.FuelMapOut[5] = 250;
    window_.setFocus(&window_.fuel(4));
    selectBlock(window_.fuel, 4, 6);
    key(window_.fuel, 4, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 4, 3), ElementsAre(245, 245, 1));
    tables_.InjOff_type = 0;
    tables_.FuelMapOut[5] = 255;
    key(window_.fuel, 4, kKeyPlus);
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 4, 3), ElementsAre(246, 255, 2));
}

TEST_F(GridEditingTest, TheAgentsKeyActsOnTheTunersBlock) {
    selectBlock(window_.fuel, 4, 6);
    window_.fuelKeyDown(100, kKeyPlus, kNoShift);
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 3, 5), ElementsAre(0, 1, 1, 1, 0));
    EXPECT_EQ(tables_.FuelMapOut[100], 0);
}

TEST_F(GridEditingTest, HalfASelectionIsNoBlock) {
    key(window_.fuel, 4, kKeyShift, kShift);
    key(window_.fuel, 4, kKeyPlus);
    EXPECT_EQ(tables_.FuelMapOut[4], 1);
    EXPECT_EQ(block(window_.fuel), (std::pair{-1, -1}));
}

TEST_F(GridEditingTest, PressingControlItselfKeepsTheBlock) {
    window_.setFocus(&window_.fuel(4));
    window_.setFocus(&window_.fuel(5));
    selectBlock(window_.fuel, 4, 6);
    window_.fuel(5).keyDown(17, kControl);
    key(window_.fuel, 5, kKeyUp, kControl);
    window_.fuel(5).keyUp(17, kNoShift);
    EXPECT_THAT(valuesOf(tables_.FuelMapOut, 3, 5), ElementsAre(0, 1, 1, 1, 0));
    EXPECT_EQ(block(window_.fuel), (std::pair{4, 6}));
}

TEST_F(GridEditingTest, WithShiftIgnitionBlocksObeyAndFuelBlocksOnlyGrow) {
    window_.setFocus(&window_.ign(4));
    selectBlock(window_.ign, 4, 6);
    window_.ign(4).keyDown(kKeyPlus, kShift);
    EXPECT_THAT(valuesOf(tables_.IgnMapOut, 4, 3), ElementsAre(1, 1, 1));
    window_.setFocus(&window_.fuel(8));
    selectBlock(window_.fuel, 4, 6);
    window_.fuel(8).keyDown(kA, kShift);
    EXPECT_EQ(block(window_.fuel), (std::pair{4, 8}));
}

}  // namespace
}  // namespace korvane::maps
