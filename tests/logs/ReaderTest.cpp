// What the reader makes of whole and of damaged logs.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/Numbers.h"
#include "logs/LogBench.h"
#include "support/ErrorOf.h"

namespace korvane::logs {
namespace {

using support::errorOf;
using testing::Each;
using testing::ElementsAre;
using Texts = std::vector<std::string>;

class Reader : public ReaderBench {};

TEST_F(Reader, RowZeroHasTheNames) {
    EXPECT_EQ(cells(0, 0, 30),
              (Texts{"Time",        "RPM",      "Twater",    "Tair",   "Voltage", "MAP",   "Throttle", "Lambda",
                     "InjTime",     "idlePID1", "BoostPID2", "K-type", "IgnAdv",  "T1",    "T2",       "T3",
                     "T4",          "V1",       "V2",        "V3",     "V4",      "Accel", "Kartta",   "Debug",
                     "updatespeed", "",         "",          "",       "",        "",      ""}));
}

TEST_F(Reader, AFileOfOneLineHasOneRowAndItsReplayEndsAtOnce) {
    load(LogText().row());
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_FALSE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(1), 1);
}

TEST_F(Reader, AnEmptyFileHasNoRowsAndReplaysZeros) {
    live_.liveValues[7].value = 5;
    load("");
    EXPECT_EQ(log_.ItemCount(), 0);
    EXPECT_FALSE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(7), 0);
    EXPECT_EQ(channel(23), 16);
    EXPECT_EQ(log_.getSimSpeed(), 0);
}

TEST_F(Reader, ALineOfBlanksIsARowOfZerosWithARate) {
    load("          \r\n");
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_THAT(cells(1, 0, 23), Each("0"));
    EXPECT_EQ(log_.TData(24, 1), "15");
    EXPECT_THAT(cells(1, 25, 30), Each("0"));
}

TEST_F(Reader, TheRateIsThatOfTheSecondBeforeUntilThisOneHasMore) {
    LogText text;
    text.row("12:00:00").row("12:00:00").row("12:00:00");  // count 0, 1, 2; speed 15
    for (int i = 0; i < 6; ++i) {
        text.row("12:00:01");  // count 0 to 5; speed 2
    }
    text.row("12:00:02").row("12:00:03");  // speed 5; then count was 0: 15
    load(text);
    Texts rates;
    for (int row = 1; row <= 11; ++row) {
        rates.push_back(log_.TData(24, row));
    }
    EXPECT_EQ(rates, (Texts{"15", "15", "15", "2", "2", "2", "3", "4", "5", "5", "15"}));
}

TEST_F(Reader, AFirstRowWhoseTimeIsTheColumnsNameCountsOn) {
    load(LogText().row("Time").row("12:00:00"));
    EXPECT_EQ(log_.TData(24, 1), "1");
    EXPECT_EQ(log_.TData(24, 2), "1");
}

TEST_F(Reader, TheTextZeroIsNotTheTimeOfARowWithoutCells) {
    load("\r\n0\r\n\r\n\r\n");
    EXPECT_EQ(log_.ItemCount(), 4);
    EXPECT_EQ(log_.TData(24, 2), "15");
    EXPECT_EQ(log_.TData(24, 3), "15");
    EXPECT_EQ(log_.TData(24, 4), "15");
    EXPECT_EQ(log_.TData(0, 2), "0");
}

TEST_F(Reader, TheRateReplacesWhatStandsInColumn24AndIsThereWithoutIt) {
    load("12:00:00 1000 1 1 1 1.5\r\n");
    EXPECT_EQ(log_.TData(24, 1), "15");
    EXPECT_EQ(log_.TData(23, 1), "0");
}

TEST_F(Reader, RpmIsDividedByTenAndPressureIsAHundredfold) {
    load(LogText().row("12:00:00", "892", "1.02"));
    EXPECT_EQ(log_.TData(1, 1), "89.2");
    EXPECT_EQ(log_.TData(5, 1), "102");
    EXPECT_TRUE(std::holds_alternative<double>(log_.Data(1, 1)));
    EXPECT_TRUE(std::holds_alternative<std::string_view>(log_.Data(2, 1)));
}

TEST_F(Reader, CellsThatRunTogetherAreOneAndMoveTheOthersLeft) {
    load(LogText().row().set(1, 2, "12.3456789").set(1, 3, "7").set(1, 4, "8").set(1, 6, "1"));
    EXPECT_EQ(log_.TData(2, 1), "12.34567897");
    EXPECT_EQ(log_.TData(3, 1), "8");
    EXPECT_EQ(log_.TData(4, 1), "1.5");
    EXPECT_EQ(log_.TData(5, 1), "100");
}

TEST_F(Reader, NulsStayInsideACell) {
    load(LogText().row().set(1, 2, "5").nuls(1, 3, 4));
    EXPECT_EQ(log_.TData(2, 1), "5");
    EXPECT_EQ(log_.TData(3, 1), std::string(4, '\0'));
    EXPECT_EQ(log_.TData(25, 1), std::string(20, '\0'));
    EXPECT_EQ(errorOf([&] { static_cast<void>(log_.number(3, 1)); }), 13);
}

TEST_F(Reader, AMissingCellIsZeroEvenAfterALongerFile) {
    load(LogText().row().row());
    load("12:00:00  1000\r\n");
    EXPECT_THAT(cells(1, 2, 23), Each("0"));
    EXPECT_THAT(cells(2, 0, 30), Each("0"));
    EXPECT_EQ(log_.number(7, 1), 0);
}

TEST_F(Reader, TextInTheRpmEndsTheLoadAtItsRow) {
    load(LogText().rows(5).set(3, 1, "abc"));
    EXPECT_EQ(log_.ItemCount(), 2);
    EXPECT_THAT(cells(3, 0, 5), ElementsAre("12:00:00", "abc", "1", "1", "1", "1.5"));
    EXPECT_EQ(log_.TData(24, 3), "15");
    EXPECT_THAT(cells(4, 0, 30), Each("0"));
    EXPECT_EQ(log_.lastLoad().failure, 13);
    EXPECT_EQ(log_.lastLoad().failedRow, 3);
}

TEST_F(Reader, TextInThePressureEndsItBehindTheRpm) {
    load(LogText().rows(3).set(2, 5, "1,5"));
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_THAT(cells(2, 0, 5), ElementsAre("12:00:00", "100", "1", "1", "1", "1,5"));
}

TEST_F(Reader, ANulRunInTheRpmEndsTheLoad) {
    load(LogText().rows(2).nuls(2, 1, 10));
    EXPECT_EQ(log_.ItemCount(), 1);
}

TEST_F(Reader, NumbersTooLargeForADoubleEndTheLoad) {
    load("12:00:00 1E+999\r\n");
    EXPECT_EQ(log_.ItemCount(), 0);
    EXPECT_EQ(log_.lastLoad().failure, 6);
    load("12:00:00 1 1 1 1 1E+307\r\n");
    EXPECT_EQ(log_.ItemCount(), 0);
    EXPECT_EQ(log_.lastLoad().failure, 6);
    load("12:00:00 1E-999 1 1 1 1E+306\r\n");
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_EQ(log_.TData(1, 1), "0");
}

TEST_F(Reader, ThirtyOneCellsAreTakenAndThirtyTwoEndTheLoad) {
    std::string line = "12:00:00 10 2 3 4 5";
    for (int column = 6; column <= 30; ++column) {
        line += " " + core::textOf(column);
    }
    load(LogText().line(line).line(line + " 31").line(line));
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_EQ(log_.TData(24, 1), "15");
    EXPECT_EQ(log_.TData(30, 1), "30");
    EXPECT_EQ(log_.lastLoad().failure, 9);
    // What the row got before: its cells, no rate and no scale.
    EXPECT_THAT(cells(2, 1, 5), ElementsAre("10", "2", "3", "4", "5"));
    EXPECT_EQ(log_.TData(24, 2), "24");
    EXPECT_EQ(log_.TData(30, 2), "30");
    EXPECT_EQ(log_.TData(0, 3), "0");
}

TEST_F(Reader, ManyLinesEndTheLoadAtRow100001) {
    std::string bytes;
    for (int i = 0; i < 100'001; ++i) {
        bytes += "1\r\n";
    }
    load(bytes);
    EXPECT_EQ(log_.ItemCount(), 100'000);
    EXPECT_EQ(log_.TData(0, 100'000), "1");
    EXPECT_EQ(log_.lastLoad().failure, 9);
    EXPECT_EQ(log_.lastLoad().failedRow, 100'001);
    load(std::string_view(bytes).substr(3));
    EXPECT_EQ(log_.ItemCount(), 100'000);
    EXPECT_EQ(log_.lastLoad().failure, 0);
}

TEST_F(Reader, ColumnsAndRowsOutsideTheTableAreABoundsError) {
    load(LogText().row());
    for (const auto& [column, row] : {std::pair(31, 1), std::pair(-1, 1), std::pair(0, 100'001), std::pair(0, -1)}) {
        EXPECT_EQ(errorOf([&, c = column, r = row] { static_cast<void>(log_.TData(c, r)); }), 9)
            << column << "," << row;
    }
    EXPECT_EQ(log_.TData(30, 100'000), "0");
    EXPECT_EQ(errorOf([&] { static_cast<void>(log_.column(31, CellReading::Val)); }), 9);
}

TEST_F(Reader, EveryLineEndEndsALine) {
    for (const char* end : {"\r\n", "\n", "\r"}) {
        load(LogText().rows(3).endLinesWith(end));
        EXPECT_EQ(log_.ItemCount(), 3);
        EXPECT_EQ(log_.TData(24, 3), "15");
        EXPECT_EQ(log_.line(3).size(), 270U);
    }
    load("1\r\r\n2\n\r3");
    EXPECT_EQ(log_.ItemCount(), 5);
    EXPECT_EQ(log_.TData(0, 1), "1");
    EXPECT_EQ(log_.TData(0, 2), "0");
    EXPECT_EQ(log_.TData(0, 3), "2");
    EXPECT_EQ(log_.TData(0, 4), "0");
    EXPECT_EQ(log_.TData(0, 5), "3");
}

TEST_F(Reader, ALineEndAcrossTwoBlocksIsOne) {
    for (std::size_t size = (1U << 20U) - 2; size <= (1U << 20U) + 1; ++size) {
        load(std::string(size, 'x') + "\r\n2 \r\n");
        EXPECT_EQ(log_.ItemCount(), 2) << size;
        EXPECT_EQ(log_.TData(0, 1).size(), size);
        EXPECT_EQ(log_.TData(0, 2), "2");
    }
}

TEST_F(Reader, ALastLineWithoutAnEndCounts) {
    load(LogText().rows(2).cutTail(2));
    EXPECT_EQ(log_.ItemCount(), 2);
    EXPECT_FALSE(log_.lastLoad().lastLineEnded);
    load(LogText().rows(2));
    EXPECT_TRUE(log_.lastLoad().lastLineEnded);
}

TEST_F(Reader, ByteTwentySixIsACharacterLikeAnother) {
    load("12:00:00 1 \x1A\r\n12:00:01 2\r\n");
    EXPECT_EQ(log_.ItemCount(), 2);
    EXPECT_EQ(log_.TData(2, 1), "\x1A");
}

TEST_F(Reader, OtherBytesAreShownAsText) {
    load("12:00:00 1 \xE4\xE4 \xC3\xA4\r\n");
    EXPECT_EQ(log_.TData(2, 1), "\xC3\xA4\xC3\xA4");
    EXPECT_EQ(log_.TData(3, 1), "\xC3\xA4");
}

TEST_F(Reader, AFileThatIsNoneLeavesTheCountAboveZeros) {
    load(LogText().rows(3));
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const auto& path : {folder_.nowhere(), folder_.path(), folder_ / "pipe", std::filesystem::path("/dev/zero")}) {
        EXPECT_FALSE(log_.LoadFromFile(path));
        EXPECT_EQ(log_.ItemCount(), 3);
        EXPECT_THAT(cells(1, 0, 30), Each("0"));
        EXPECT_EQ(log_.column(1, CellReading::Number).values, std::vector<double>(4));
        EXPECT_NE(log_.lastLoad().failure, 0);
    }
}

TEST_F(Reader, ALineThatDoesNotEndWithinItsBoundEndsTheLoad) {
    std::filesystem::resize_file(folder_.write("log.txt", "12:00:00 1\r\n"), std::uintmax_t{2} << 30U);
    EXPECT_FALSE(log_.LoadFromFile(folder_ / "log.txt"));
    EXPECT_EQ(log_.ItemCount(), 1);
    EXPECT_EQ(log_.lastLoad().failure, 14);
    EXPECT_EQ(log_.TData(0, 2), "0");
}

TEST_F(Reader, AFileThatGrowsWhileItIsReadIsReadToItsEnd) {
    const auto file = folder_.write("log.txt", LogText().rows(5000).bytes);
    int blocks = 0;
    log_.loading = [&](std::uintmax_t, std::uintmax_t) {
        if (++blocks == 1) {
            std::ofstream(file, std::ios::binary | std::ios::app) << LogText().rows(5000).bytes;
        }
    };
    EXPECT_FALSE(log_.LoadFromFile(file));
    EXPECT_EQ(log_.ItemCount(), 10'000);
    EXPECT_EQ(log_.TData(1, 10'000), "100");
}

TEST_F(Reader, AFileThatShrinksOrGoesWhileItIsReadEndsThere) {
    const auto file = folder_.write("log.txt", LogText().rows(10'000).bytes);
    log_.loading = [&](std::uintmax_t, std::uintmax_t) {
        if (std::filesystem::exists(file)) {
            std::filesystem::resize_file(file, 272 * 10);
            std::filesystem::remove(file);
        }
    };
    EXPECT_FALSE(log_.LoadFromFile(file));
    EXPECT_EQ(log_.ItemCount(), (1 << 20) / 272 + 1);
}

TEST_F(Reader, ReplayScalesRpmAndPressureBackAndTakesTheOthersAsTheyAre) {
    std::string line = "12:00:00 8920 2 3 4 1.5";
    for (int column = 6; column <= 24; ++column) {
        line += " " + core::textOf(column) + ".5";
    }
    load(LogText().line(line).line("12:00:01").line("12:00:02"));
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(0), 8920);
    EXPECT_EQ(channel(1), 2);
    EXPECT_EQ(channel(4), 1.5);
    EXPECT_EQ(channel(5), 6.5);
    EXPECT_EQ(channel(22), 23.5);
    EXPECT_EQ(channel(23), 16);
    EXPECT_EQ(channel(24), 0);
}

TEST_F(Reader, ReplayLeavesOutTheLastRowAndBeginsAgain) {
    load(LogText().row("12:00:00", "10").row("12:00:00", "20").row("12:00:01", "30"));
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(0), 10);
    EXPECT_FALSE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(0), 20);
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(0), 10);
}

TEST_F(Reader, TheSpeedIsThatOfTheNextRow) {
    load(LogText().row("12:00:00").row("12:00:00").row("12:00:01").row("12:00:02"));
    EXPECT_EQ(log_.getSimSpeed(), 15);
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_EQ(log_.getSimSpeed(), 1);
}

TEST_F(Reader, ALoadKeepsTheReplaysRow) {
    load(LogText().rows(5));
    EXPECT_TRUE(log_.getNextSimDataPacket());
    EXPECT_TRUE(log_.getNextSimDataPacket());
    load(LogText().row("12:00:00", "1").row("12:00:00", "2").row("12:00:00", "3").row("12:00:00", "4"));
    EXPECT_FALSE(log_.getNextSimDataPacket());
    EXPECT_EQ(channel(0), 3);
    load(LogText().rows(1));
    EXPECT_EQ(log_.replayRow(), 1);
}

TEST_F(Reader, ATextInTheReplayFailsWithTheChannelsBeforeItSet) {
    load(LogText().rows(3).set(1, 3, "abc"));
    live_.liveValues[2].value = 77;
    EXPECT_EQ(errorOf([&] { static_cast<void>(log_.getNextSimDataPacket()); }), 13);
    EXPECT_EQ(channel(0), 1000);
    EXPECT_EQ(channel(4), 1.5);
    EXPECT_EQ(channel(1), 1);
    EXPECT_EQ(channel(2), 77);
    EXPECT_EQ(channel(3), 0);
    EXPECT_EQ(log_.replayRow(), 1);
}

TEST_F(Reader, ATextInColumn24OfAFailingRowFailsTheSpeed) {
    std::string line = "1";
    for (int column = 1; column <= 31; ++column) {
        line += column == 24 ? " x" : " 1";
    }
    load(line);
    EXPECT_EQ(log_.ItemCount(), 0);
    EXPECT_EQ(errorOf([&] { static_cast<void>(log_.getSimSpeed()); }), 13);
}

TEST_F(Reader, TrendDataIsRows1To400OrTheTable) {
    load(LogText().row("12:00:00", "10").row("12:00:00", "20"));
    clsTXTdata::TrendTarget target;
    log_.getTrendData(target, false, 3, 1);
    EXPECT_EQ(target.series[3][0], LogCell(std::string_view()));
    EXPECT_EQ(target.series[3][1], LogCell(1.0));
    EXPECT_EQ(target.series[3][2], LogCell(2.0));
    EXPECT_EQ(target.series[3][400], LogCell(0.0));
    EXPECT_EQ(target.table, nullptr);
    log_.getTrendData(target, true, 0, 0);
    EXPECT_EQ(target.table, &log_);
    EXPECT_EQ(errorOf([&] { log_.getTrendData(target, false, 5, 1); }), 9);
    EXPECT_EQ(errorOf([&] { log_.getTrendData(target, false, 0, 31); }), 9);
}

TEST_F(Reader, AColumnOfNumbersEndsAtTheFirstText) {
    load(LogText().rows(4).set(2, 7, "0.1").set(3, 7, "abc"));
    const LogColumn& numbers = log_.column(7, CellReading::Number);
    EXPECT_THAT(numbers.values, ElementsAre(0, 1, static_cast<double>(0.1F), 0, 0));
    EXPECT_EQ(numbers.failedRow, 3);
    EXPECT_EQ(numbers.failure, 13);
    EXPECT_EQ(&log_.column(7, CellReading::Number), &numbers);
    EXPECT_THAT(log_.column(7, CellReading::Val).values, ElementsAre(0, 1, 0.1, 0, 1));
    EXPECT_EQ(log_.column(7, CellReading::Val).failure, 0);
    EXPECT_THAT(log_.column(1, CellReading::Number).values, ElementsAre(0, 100, 100, 100, 100));
    EXPECT_THAT(log_.column(24, CellReading::Val).values, ElementsAre(0, 15, 15, 15, 15));
}

TEST(ReaderWithComma, ReadsAndShowsNumbersWithAComma) {
    const support::TempFolder folder;
    core::LiveTable live;
    clsTXTdata log(live, ',');
    log.LoadFromFile(folder.write("log.txt", LogText().row("12:00:00", "892", "1,5").set(1, 7, "12,5").bytes));
    EXPECT_EQ(log.ItemCount(), 1);
    EXPECT_EQ(log.TData(1, 1), "89,2");
    EXPECT_EQ(log.number(7, 1), 12.5);
    EXPECT_EQ(log.column(7, CellReading::Val).values[1], 12);
    log.LoadFromFile(folder.write("log.txt", LogText().row().bytes));
    EXPECT_EQ(log.ItemCount(), 0);
}

}  // namespace
}  // namespace korvane::logs
