#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AnalysisBench.h"
#include "support/FileSizeLimit.h"

namespace korvane::analysis {
namespace {

using support::Bytes;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// Neighbours differ so that there is no smoothing unless a test asks for it: rising down the columns, level along the
// rows.
class TuningAgentTest : public AnalysisBench {
protected:
    TuningAgentTest() {
        for (std::size_t cell = 0; cell < 320; ++cell) {
            tables_.FuelMapOut.at(cell) = static_cast<std::uint8_t>(50 + cell / 16 * 6);
        }
        analyser_.setMapWindow(&window_);
        analyser_.setLogData(true);
    }

    // `count` readings of `lambda`, so far above column and row of the cell.
    void gather(int cell, int count, float lambda, float rpmOffset = 0.0F, float loadOffset = 0.0F) {
        const auto rpm = static_cast<float>(1000 + 500 * (cell % 16)) + rpmOffset;
        const float load = (static_cast<float>(cell) / 16.0F + 1.0F) * 0.1F + loadOffset;
        for (int i = 0; i < count; ++i) {
            analyser_.addValues(lambda, static_cast<float>(cell), rpm, load);
        }
    }
    void tick() {
        analyser_.CorrectAllCells();
        analyser_.SmoothFuelMap();
    }
    std::vector<std::string> keys() const {
        std::vector<std::string> keys;
        for (const auto& line : window_.journal) {
            if (line.starts_with("key")) {
                keys.push_back(line);
            }
        }
        return keys;
    }
    std::uint8_t& map(int cell) { return tables_.FuelMapOut.at(static_cast<std::size_t>(cell)); }
};

// Cell 20 is column 4: 3000 rpm.
TEST_F(TuningAgentTest, ALeanCellGetsOneStepOfFuel) {
    gather(20, 41, 13.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
    EXPECT_EQ(analyser_.SampleCount[20], 0.0F);
    EXPECT_EQ(analyser_.LambdaAvg(20), 0.0F);
}

// 40 samples of 0.5 weigh 20, which is not enough.
TEST_F(TuningAgentTest, TheWeightHasToBeMoreThanTwenty) {
    gather(20, 40, 13.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), IsEmpty());
    EXPECT_EQ(analyser_.LastCount[20], 40.0F);
}

// 0.25 above the target and 100 samples weigh 25: less fuel, although the cell is lean.
TEST_F(TuningAgentTest, ASlightlyLeanCellLosesFuel) {
    gather(20, 100, 12.75F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 189 0"));
}

TEST_F(TuningAgentTest, ARichCellLosesFuel) {
    gather(20, 50, 12.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 189 0"));
}

// A target of 0 makes the difference the reading itself.
TEST_F(TuningAgentTest, JustThreeTenthsIsNeither) {
    analyser_.Setpoint(0.0F, 20);
    analyser_.setSimpleMode(true);
    gather(20, 1, 0.3F);
    analyser_.SampleCount[20] = 1000.0F;
    window_.journal.clear();
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), IsEmpty());
}

TEST_F(TuningAgentTest, AWholeCorrectionTicksRealtimeChangesAndTakesItsTime) {
    gather(20, 41, 13.0F);
    analyser_.setSimpleMode(true);
    analyser_.setAgentEnable(true);
    analyser_.CorrectAllCells();
    EXPECT_THAT(window_.journal, ElementsAre("online", "key 20 187 0", "offline"));
    EXPECT_THAT(window_.lamps, ElementsAre("red"));
    EXPECT_EQ(machine_.pump.milliseconds(), 50);
}

TEST_F(TuningAgentTest, WritesALineForEachCorrection) {
    gather(20, 42, 13.0F, 100.0F, -0.05F);
    analyser_.setSimpleMode(true);
    analyser_.CellStats[20].LoadOffsetAvg = -0.5F;
    analyser_.CellStats[20].RpmOffsetAvg = 100.0F;
    analyser_.CorrectAllCells();
    // 42 * 0.5 = 21.
    EXPECT_EQ(machine_.folder.read("FuelTuner12_00.txt"), "INDX 20 1 21 100 -0.5 12:00:00\r\n");
}

// 41 * 0.5625 = 23.0625, cut downwards also below zero.
TEST_F(TuningAgentTest, CorrectionsOfOneMinuteShareAFile) {
    analyser_.setSimpleMode(true);
    gather(20, 41, 13.0625F);
    analyser_.CellStats[20].LoadOffsetAvg = 0.0F;
    gather(40, 41, 11.9375F);
    analyser_.CellStats[40].LoadOffsetAvg = 0.0F;
    analyser_.CorrectAllCells();
    EXPECT_EQ(machine_.folder.read("FuelTuner12_00.txt"),
              "INDX 20 1 23.06 0 0 12:00:00\r\n"
              "INDX 40 -1 -23.07 0 0 12:00:00\r\n");
}

TEST_F(TuningAgentTest, TheLogHasTheRegionsDecimalSign) {
    machine_.machine.decimal = ',';
    analyser_.setSimpleMode(true);
    gather(20, 41, 13.0625F);
    analyser_.CellStats[20].RpmOffsetAvg = 100.0F;
    analyser_.CellStats[20].LoadOffsetAvg = -0.5F;
    analyser_.CorrectAllCells();
    EXPECT_EQ(machine_.folder.read("FuelTuner12_00.txt"), "INDX 20 1 23,06 100 -0,5 12:00:00\r\n");
}

TEST_F(TuningAgentTest, AFullDiskKeepsTheLogThatIsThere) {
    const std::string old = "INDX 20 1 21 100 -0.5 12:00:00\r\n";
    machine_.folder.write("FuelTuner12_00.txt", old);
    gather(20, 41, 13.0F);
    {
        const support::FileSizeLimit disk(old.size());
        analyser_.CorrectAllCells();
    }
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].text, "Error saveFuelTunerData: Disk full");
    EXPECT_EQ(machine_.folder.read("FuelTuner12_00.txt"), old);
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
}

TEST_F(TuningAgentTest, ALogThatCantBeWrittenIsToldAndStopsNothing) {
    std::filesystem::create_directory(machine_.folder / "FuelTuner12_00.txt");
    gather(20, 41, 13.0F);
    analyser_.CorrectAllCells();
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_TRUE(messages[0].text.starts_with("Error saveFuelTunerData: "));
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
}

TEST_F(TuningAgentTest, InSimpleModeNeighboursAndOffsetsStay) {
    analyser_.setSimpleMode(true);
    gather(20, 41, 13.0F, 200.0F, 0.05F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
    EXPECT_NEAR(analyser_.CellStats[20].RpmOffsetAvg, 200.0, 0.01);
    EXPECT_NEAR(analyser_.CellStats[20].LoadOffsetAvg, 0.05, 1e-3);
}

TEST_F(TuningAgentTest, BetweenTwoColumnsBothAreCorrected) {
    gather(20, 41, 13.0F, 125.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 21 187 0"));
    EXPECT_EQ(analyser_.CellStats[20].RpmOffsetAvg, 0.0F);
    window_.journal.clear();
    gather(20, 41, 13.0F, 375.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 21 187 0"));
    window_.journal.clear();
    gather(20, 41, 13.0F, 124.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
}

// The cell itself is then corrected by its load share, with all its weight.
TEST_F(TuningAgentTest, NearTheNextColumnTheRpmShareGoesThere) {
    gather(20, 41, 13.0F, 376.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 21 187 0", "key 20 187 0"));
}

TEST_F(TuningAgentTest, TheLastColumnPassesItsShareToNobody) {
    gather(31, 41, 13.0F, 200.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 31 187 0"));
    window_.journal.clear();
    gather(31, 41, 13.0F, 450.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 31 187 0"));
}

TEST_F(TuningAgentTest, BetweenTwoRowsTheOneBelowFollows) {
    gather(20, 41, 13.0F, 0.0F, 0.05F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 36 187 0"));
    EXPECT_EQ(analyser_.CellStats[20].LoadOffsetAvg, 0.0F);
    window_.journal.clear();
    gather(20, 41, 13.0F, 0.0F, 0.02F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0"));
    window_.journal.clear();
    gather(20, 41, 13.0F, 0.0F, 0.08F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 36 187 0"));
}

// Row 19 of the arithmetic is the last: 304 + 16 is beyond 319, 303 + 16 is not.
TEST_F(TuningAgentTest, TheLastRowPassesItsShareToNobody) {
    gather(304, 41, 13.0F, 10.0F, 0.08F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 304 187 0"));
    window_.journal.clear();
    gather(303, 41, 13.0F, 0.0F, 0.08F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 303 187 0", "key 319 187 0"));
}

TEST_F(TuningAgentTest, ANeighbourWithDataOfItsOwnLosesThem) {
    gather(21, 10, 13.0F);
    gather(20, 41, 13.0F, 200.0F);
    analyser_.CorrectAllCells();
    EXPECT_EQ(analyser_.SampleCount[21], 0.0F);
    EXPECT_THAT(keys(), Contains("key 21 187 0"));
}

// 10 samples of 0.5 are a weight of 5. Without a sample it would be 0, and the neighbour would stay.
TEST_F(TuningAgentTest, ANeighbourHasTheWeightOfItsOwnSamplesOrOne) {
    gather(21, 10, 13.0F);
    gather(20, 41, 13.0F, 200.0F);
    gather(40, 41, 13.0F, 200.0F);
    for (const std::size_t cell : {20U, 21U, 40U}) {
        analyser_.CellStats.at(cell).LoadOffsetAvg = 0.0F;
    }
    analyser_.CorrectAllCells();
    EXPECT_EQ(machine_.folder.read("FuelTuner12_00.txt"),
              "INDX 20 1 20.5 200 0 12:00:00\r\n"
              "INDX 21 1 5 0 0 12:00:00\r\n"
              "INDX 40 1 20.5 200 0 12:00:00\r\n"
              "INDX 41 1 1 0 0 12:00:00\r\n");
}

// The rpm share goes to cell 21 alone, so that the step of the cell itself comes from its load share.
TEST_F(TuningAgentTest, TheRowBelowFollowsFromThreeHundredthsToSevenAndAbove) {
    const auto keysAt = [this](float loadOffset) {
        window_.journal.clear();
        gather(20, 41, 13.0F, 376.0F);
        analyser_.CellStats[20].LoadOffsetAvg = loadOffset;
        analyser_.CorrectAllCells();
        return keys();
    };
    EXPECT_THAT(keysAt(0.0299F), ElementsAre("key 21 187 0", "key 20 187 0"));
    EXPECT_THAT(keysAt(0.03F), ElementsAre("key 21 187 0", "key 20 187 0", "key 36 187 0"));
    EXPECT_THAT(keysAt(0.07F), ElementsAre("key 21 187 0", "key 20 187 0", "key 36 187 0"));
    EXPECT_THAT(keysAt(0.0701F), ElementsAre("key 21 187 0", "key 36 187 0"));
}

// Cell 31 ends the second row of 16, cell 39 that of 20. The shares of load go 16 cells on.
TEST_F(TuningAgentTest, ColumnsAreThoseOfTheOrdinaryMapAlsoForALargeOne) {
    analyser_.setMapSize(320);
    gather(20, 41, 13.0F, 0.0F, 0.05F);
    gather(31, 41, 13.0F, 200.0F);
    gather(39, 41, 13.0F, 200.0F);
    analyser_.CorrectAllCells();
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 36 187 0", "key 31 187 0", "key 39 187 0", "key 40 187 0"));
}

TEST_F(TuningAgentTest, SmoothingALargeMapLooksSixteenCellsOn) {
    analyser_.setMapSize(320);
    map(0) = 64;  // 8 above cell 16: half of it on top
    const auto below = map(20);
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(16), 60);
    EXPECT_EQ(map(20), below);
}

// Row 9 is the last of an ordinary window, not of the arithmetic.
TEST_F(TuningAgentTest, AStepBelowTheWindowsLastRowIsPassedOver) {
    window_.cells = 160;
    gather(150, 41, 13.0F, 0.0F, 0.05F);
    gather(155, 41, 13.0F);
    map(0) = 64;  // 8 above the row below: half of 8 on top
    tick();
    EXPECT_THAT(keys(), ElementsAre("key 150 187 0", "key 155 187 0"));
    EXPECT_EQ(analyser_.CellStats[150].LoadOffsetAvg, 0.0F);
    EXPECT_EQ(map(16), 60);
    window_.journal.pop_back();  // the smoothing's "draw"
    EXPECT_EQ(window_.journal.back(), "offline");
}

class FailingMap : public NotingMap {
public:
    using NotingMap::NotingMap;
    void pressFuelKey(int, int, int) override { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); }
};

TEST_F(TuningAgentTest, AFailingStepDoesNotLeaveRealtimeChangesTicked) {
    FailingMap failing(tables_);
    analyser_.setMapWindow(&failing);
    gather(20, 41, 13.0F);
    EXPECT_EQ(errorOf([&] { analyser_.CorrectAllCells(); }), platform::kErrorOverflow);
    EXPECT_THAT(failing.journal, ElementsAre("online", "offline"));
}

TEST_F(TuningAgentTest, TheClockRunsEvery300MillisecondsWhileItIsOn) {
    analyser_.setAgentEnable(true);
    EXPECT_TRUE(analyser_.AgentEnable());
    machine_.pump.wait(299);
    EXPECT_THAT(window_.lamps, IsEmpty());
    machine_.pump.wait(301);
    EXPECT_THAT(window_.lamps, ElementsAre("green", "green"));
    analyser_.setAgentEnable(false);
    machine_.pump.wait(1000);
    EXPECT_THAT(window_.lamps, ElementsAre("green", "green", "grey"));
}

// 300 ms to the pass, whose second step begins 50 ms later: it is made, with the grey lamp.
TEST_F(TuningAgentTest, StoppedInTheMiddleOfALookItFinishesTheLookUnderTheGreyLamp) {
    analyser_.setSimpleMode(true);
    gather(20, 41, 13.0F);
    gather(21, 41, 13.0F);
    analyser_.setAgentEnable(true);
    const auto alarm = machine_.pump.makeAlarm([&] { analyser_.setAgentEnable(false); });
    alarm->callAt(320'000);
    machine_.pump.wait(1000);
    EXPECT_THAT(keys(), ElementsAre("key 20 187 0", "key 21 187 0"));
    EXPECT_THAT(window_.lamps, ElementsAre("green", "red", "grey", "grey"));
}

TEST_F(TuningAgentTest, AClosedWindowStopsIt) {
    analyser_.setAgentEnable(true);
    analyser_.setMapWindow(nullptr);
    EXPECT_FALSE(analyser_.AgentEnable());
    EXPECT_TRUE(analyser_.LogData());
    machine_.pump.wait(1000);
    EXPECT_THAT(window_.lamps, IsEmpty());
}

TEST_F(TuningAgentTest, AWindowThatClosesInTheWaitIsNotTouchedAgain) {
    gather(20, 41, 13.0F, 200.0F);
    const auto alarm = machine_.pump.makeAlarm([&] { analyser_.setMapWindow(nullptr); });
    alarm->callAt(10'000);
    tick();
    EXPECT_THAT(window_.journal, ElementsAre("online", "key 20 187 0"));
}

// Ticks come inside the waits of the passes before them.
TEST_F(TuningAgentTest, LooksInsideEachOthersWaitsEnd) {
    analyser_.setSimpleMode(true);
    for (int cell = 0; cell < 150; ++cell) {
        gather(cell, 100, 14.0F, 50.0F);
    }
    analyser_.setAgentEnable(true);
    machine_.pump.wait(60'000);
    EXPECT_EQ(keys().size(), 150U);
}

// 150 corrections of 50 ms each last from 300 to 7800 ms: by 7400 ms 24 ticks have come.
TEST_F(TuningAgentTest, NoMoreThanTwentyLooksRunInsideEachOther) {
    analyser_.setSimpleMode(true);
    for (int cell = 0; cell < 150; ++cell) {
        gather(cell, 100, 14.0F, 50.0F);
    }
    std::ptrdiff_t looks = 0;
    const auto alarm = machine_.pump.makeAlarm(
        [&] { looks = std::count(window_.lamps.begin(), window_.lamps.end(), std::string("green")); });
    alarm->callAt(7'400'000);
    analyser_.setAgentEnable(true);
    machine_.pump.wait(10'000);
    EXPECT_EQ(looks, 20);
}

TEST_F(TuningAgentTest, AnOverflowEndsTheTickAndTheNextOneComes) {
    map(132) = 254;  // row 8: the cell below, at 104, would get 254 + 5
    analyser_.setAgentEnable(true);
    machine_.pump.wait(650);
    EXPECT_THAT(machine_.log.lines, ElementsAre("clsTimer: Overflow", "clsTimer: Overflow"));
}

class SmoothingTest : public TuningAgentTest {};

TEST_F(SmoothingTest, ASaneMapStays) {
    const auto before = tables_.FuelMapOut;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(tables_.FuelMapOut, before);
    EXPECT_THAT(window_.journal, IsEmpty());
}

// Column 1 of row 3 stands at 68; the cell before it 6 above: half of 6 goes on top of it. Both then stand below what
// the row beneath has.
TEST_F(SmoothingTest, LowColumnsMeetHalfWay) {
    map(48) = 74;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(49), 71);
    EXPECT_THAT(window_.journal, ElementsAre("draw"));
}

TEST_F(SmoothingTest, FiveIsNotTooMuch) {
    map(48) = 73;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(49), 68);
    EXPECT_THAT(window_.journal, IsEmpty());
}

// 7 / 2 = 3.5 goes to 4; 9 / 2 = 4.5 goes to 4 as well.
TEST_F(SmoothingTest, HalvesGoToTheEvenNumber) {
    map(48) = 75;
    map(80) = 89;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(49), 72);
    EXPECT_EQ(map(81), 84);
}

// 22 / 2 = 11 becomes 10, 20 / 2 stays 10. The cell below is lifted too, being lower by then.
TEST_F(SmoothingTest, NoCellRisesByMoreThanTen) {
    map(48) = 68 + 22;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(49), 78);
}

// Column 5 on: more than 3 below its left neighbour becomes equal to it.
TEST_F(SmoothingTest, HighColumnsBecomeEqual) {
    map(53) = 68 + 4;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(54), 72);
    EXPECT_EQ(map(55), 72) << "and so on along the row";
    map(85) = 80 + 3;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(86), 80);
}

// Rows 0 and 1 meet half-way down, the others put 5 more below. Row 0 stands at 50, row 1 at 56.
TEST_F(SmoothingTest, DownTheColumnsFuelRises) {
    map(15) = 0;
    map(0) = 64;  // 8 above row 1
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(16), 60);
    map(52) = 75;  // row 3 above row 4 at 74, within 5 of its right neighbour no more
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(68), 80);
}

// Column 4 meets half-way: half of 8. The same step from column 5 to 6 makes them equal.
TEST_F(SmoothingTest, ColumnFourIsTheLastLowOne) {
    map(52) = 68 + 8;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(53), 72);
    map(85) = 80 + 8;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(86), 88);
}

// Column 14 is compared downwards; the row above it must not be smoothed too.
TEST_F(SmoothingTest, RowOneIsTheLastThatMeetsHalfWay) {
    map(14) = 50 + 11;  // 5 above row 1 at 56 stays
    map(31) = 56 + 5;   // keeps its row level
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(30), 56);
    map(30) = 62 + 6;  // row 1, 6 above row 2: half of 6
    map(31) = 62 + 5;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(46), 65);
    map(46) = 68 + 1;  // row 2, 1 above row 3 at 68
    map(47) = 68;
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(62), 74);
}

TEST_F(SmoothingTest, TheLastColumnAndTheLastRowsAreNoStartingPoints) {
    map(15) = 200;   // column 15 of row 0: nothing right of it, and columns end at 14
    map(144) = 200;  // row 9
    analyser_.SmoothFuelMap();
    EXPECT_EQ(map(31), 56);
    EXPECT_EQ(map(145), 104);
    EXPECT_EQ(map(160), 110);
}

TEST_F(SmoothingTest, EachChangedCellIsSent) {
    main_.MSComm1.Settings = "57600,N,8,1";
    main_.MSComm1.setPortOpen(true);
    map(48) = 74;    // column 1 follows
    map(142) = 106;  // column 14 of row 8: row 9, at 104, gets 5 more than it
    map(143) = 104;
    analyser_.SmoothFuelMap();
    machine_.pump.wait(100);
    Bytes bytes;
    for (const auto& arrival : machine_.recorder.arrivals) {
        bytes.push_back(arrival.byte);
    }
    EXPECT_THAT(bytes, ElementsAre('g', 49, 49, 71, 71, 0x98, 'g', 158, 158, 111, 111, 0x98));
}

}  // namespace
}  // namespace korvane::analysis
