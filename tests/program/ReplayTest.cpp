// The replay of a log through the live values. Twater holds the number of the row.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program/LogViewerBench.h"

namespace korvane::trend {
namespace {

using support::LogText;
using support::numberedLog;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kTwater = 1;  // channel

// Two rows in each second but the first, which has one. Rows 1 to 3 have the usual rate of 15, all others a rate of 1:
// the rows behind the first of the second before.
std::string slowLog(int count) {
    LogText log;
    for (int n = 1; n <= count; ++n) {
        log.row(n / 2, {{2, std::to_string(n)}});
    }
    return log.text();
}

// The pauses in milliseconds.
constexpr int kUsual = 50;  // 1000 / 15 / 1.33 = 50.1
constexpr int kSlow = 751;  // 1000 / 1 / 1.33 = 751.9

class ReplayTest : public LogViewerBench {
protected:
    void play() { viewer().btnSimulate.press(); }
    [[nodiscard]] double row() const { return channel(kTwater); }
};

TEST_F(ReplayTest, TheButtonStartsAndStops) {
    load(numberedLog(300));
    play();
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "STOP");
    EXPECT_TRUE(viewer().TimerSim.Enabled);
    wait(kUsual);
    EXPECT_EQ(row(), 1);
    play();
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "Simulate");
    EXPECT_FALSE(viewer().TimerSim.Enabled);
    wait(1000);
    EXPECT_EQ(row(), 1);
    play();
    wait(kUsual);
    EXPECT_EQ(row(), 2) << "it goes on where it stood";
}

TEST_F(ReplayTest, ThePauseBehindARowIsThatOfTheNext) {
    load(slowLog(10));
    play();
    wait(kUsual - 1);
    EXPECT_EQ(row(), 0);
    wait(1);
    EXPECT_EQ(row(), 1);
    EXPECT_EQ(viewer().TimerSim.Interval, kUsual);
    wait(kUsual);
    EXPECT_EQ(row(), 2);
    EXPECT_EQ(viewer().TimerSim.Interval, kUsual);
    wait(kUsual);
    EXPECT_EQ(row(), 3);
    EXPECT_EQ(viewer().TimerSim.Interval, kSlow);
    wait(kSlow - 1);
    EXPECT_EQ(row(), 3);
    wait(1);
    EXPECT_EQ(row(), 4);
}

TEST_F(ReplayTest, ARowGoesTheWayOfLiveData) {
    load(LogText().row(0, {{1, "2500"}, {5, "0.98"}, {6, "37"}, {21, "4"}, {22, "17"}}).row(1).row(2).text());
    main.chkDatalog.press();
    play();
    wait(kUsual);
    EXPECT_EQ(main.lblValue(0).Caption.get(), "2500");
    EXPECT_EQ(main.lblValue(4).Caption.get(), "0.98");
    EXPECT_EQ(main.lblValue(5).Caption.get(), "37");
    EXPECT_EQ(main.lblAccel.Caption.get(), "4");
    EXPECT_EQ(run.tables.MapPlace, 17);
    EXPECT_EQ(channel(23), 16);
    EXPECT_EQ(run.tables.logDataCount, 1) << "it is logged again";
}

TEST_F(ReplayTest, TheEndLeavesStopAndThenBeginsAnew) {
    load(numberedLog(3));
    play();
    wait(10 * kUsual);
    EXPECT_EQ(row(), 2) << "the last row is never replayed";
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "STOP");
    EXPECT_FALSE(viewer().TimerSim.Enabled);
    play();
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "STOP");
    EXPECT_TRUE(viewer().TimerSim.Enabled);
    wait(kUsual);
    EXPECT_EQ(row(), 1);
}

TEST_F(ReplayTest, BeginsWithADisconnect) {
    run.connect();
    ASSERT_TRUE(main.isConnected);
    load(numberedLog(300));
    play();
    EXPECT_FALSE(main.isConnected);
    EXPECT_FALSE(main.MSComm1.PortOpen());
    EXPECT_EQ(main.btnConnect.Caption.get(), "Connect");
    EXPECT_TRUE(viewer().TimerSim.Enabled);
}

TEST_F(ReplayTest, DoesNotBeginInAWindowThatTheDisconnectHasClosed) {
    run.connect();
    load(numberedLog(300));
    auto& window = viewer();
    main.btnConnect.Click = [&] { EXPECT_TRUE(window.unload()); };
    play();
    EXPECT_FALSE(window.TimerSim.Enabled);
    main.btnConnect.Click = nullptr;
    wait(1000);
    EXPECT_EQ(row(), 0);
}

TEST_F(ReplayTest, GoesOnBesideAConnection) {
    load(numberedLog(300));
    play();
    wait(kUsual);
    main.btnConnect.press();
    EXPECT_TRUE(main.isConnected);
    wait(kUsual);
    EXPECT_EQ(row(), 2);
    play();
    EXPECT_FALSE(main.isConnected) << "a stop disconnects as well";
    EXPECT_FALSE(viewer().TimerSim.Enabled);
}

TEST_F(ReplayTest, GoesOnInTheNextFileAtItsRow) {
    load(numberedLog(300));
    play();
    wait(2 * kUsual);
    EXPECT_EQ(row(), 2);
    load(slowLog(300), "other.txt");
    EXPECT_TRUE(viewer().TimerSim.Enabled);
    wait(kUsual);
    EXPECT_EQ(row(), 3);
}

TEST_F(ReplayTest, ARowBehindAShorterFileIsZerosAndTheEnd) {
    load(numberedLog(300));
    play();
    wait(20 * kUsual);
    const auto before = row();
    ASSERT_GT(before, 5);
    load(numberedLog(5), "short.txt");
    wait(kSlow);
    EXPECT_EQ(row(), 0);
    EXPECT_FALSE(viewer().TimerSim.Enabled);
}

TEST_F(ReplayTest, EndsWithItsWindow) {
    load(numberedLog(300));
    play();
    wait(kUsual);
    EXPECT_TRUE(viewer().unload());
    wait(1000);
    EXPECT_EQ(row(), 1);
    main.btnDatalogTrend.press();
    EXPECT_FALSE(viewer().TimerSim.Enabled);
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "Simulate");
}

TEST_F(ReplayTest, GoesOnWhenTheViewerIsOpenedOnceMore) {
    load(numberedLog(300));
    play();
    wait(kUsual);
    main.btnDatalogTrend.press();
    wait(kUsual);
    EXPECT_EQ(row(), 2);
}

TEST_F(ReplayTest, ALogWithoutRowsEndsInADivisionByZero) {
    load("");
    EXPECT_TRUE(viewer().btnSimulate.Enabled);
    main.lblValue(0).Caption = "as it was";
    play();
    wait(1000);
    EXPECT_THAT(run.log.lines, ElementsAre(HasSubstr("Division by zero")));
    EXPECT_FALSE(viewer().TimerSim.Enabled);
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "STOP");
    EXPECT_EQ(main.lblValue(0).Caption.get(), "as it was") << "nothing is shown of the row";
}

// 32 cells end the load in the first row, and what its cells hold by then stays.
TEST_F(ReplayTest, ATextForTheRateEndsTheTick) {
    std::string line = "12:00:00";
    for (int column = 1; column < 32; ++column) {
        line += column == 24 ? " fast" : " 7";
    }
    load(LogText().line(line).text());
    play();
    wait(1000);
    EXPECT_EQ(row(), 7);
    EXPECT_THAT(run.log.lines, ElementsAre(HasSubstr("Type mismatch")));
    EXPECT_FALSE(viewer().TimerSim.Enabled);
}

TEST_F(ReplayTest, ATextForAChannelStaysAtItsRowWithoutHarm) {
    load(LogText().row(0, {{2, "1"}}).row(1, {{2, "cold"}}).row(2, {{2, "3"}}).row(3).text());
    play();
    wait(5 * kUsual);
    EXPECT_EQ(row(), 1);
    EXPECT_THAT(run.log.lines, SizeIs(4));
    play();
    EXPECT_FALSE(viewer().TimerSim.Enabled);
}

// From the 753rd row of one second on the pause is 1000 / 752 / 1.33, less than a millisecond, and a timer of none
// does not tick.
TEST_F(ReplayTest, TooManyRowsInASecondStandStill) {
    LogText log;
    for (int n = 1; n <= 800; ++n) {
        log.row(0, {{2, std::to_string(n)}});
    }
    load(log.text());
    play();
    wait(100'000);
    EXPECT_EQ(row(), 752);
    EXPECT_EQ(viewer().TimerSim.Interval, 0);
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "STOP");
    EXPECT_THAT(run.log.lines, IsEmpty());
    play();
    EXPECT_EQ(viewer().btnSimulate.Caption.get(), "Simulate");
}

}  // namespace
}  // namespace korvane::trend
