// A recorded log as a drive for the steady agent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/LogRehearsal.h"
#include "core/Numbers.h"
#include "steady/TinyCar.h"
#include "support/LogText.h"
#include "support/TempFolder.h"

namespace korvane::analysis {
namespace {

using core::LiveChannel;
using steady::TinyCar;
using steady::Verdict;
using support::LogText;

constexpr int kNoon = 12 * 3600;

std::string cell(double value) {
    return core::textOf(std::round(value * 10000.0) / 10000.0);
}

void addRow(LogText& log, int begin, const steady::Frame& frame) {
    log.row(begin + static_cast<int>(frame.seconds), {{1, cell(frame.rpm)},
                                                      {2, cell(frame.waterC)},
                                                      {5, cell(frame.load / 100.0)},
                                                      {6, cell(frame.throttle)},
                                                      {7, cell(frame.lambda)},
                                                      {8, cell(frame.duty)},
                                                      {22, std::to_string(frame.cell)},
                                                      {23, std::to_string(frame.lamps)}});
}

std::string drive(TinyCar& car, int begin, int frames) {
    LogText log;
    for (int i = 0; i < frames; ++i) {
        addRow(log, begin, car.next());
    }
    return log.text();
}

class LogRehearsalTest : public testing::Test {
protected:
    LogRehearsalTest() {
        car_.spoil(-8.0);
        start_.map = start_.baseline = car_.bytes();
        start_.setup.richAuthority = 30.0;
    }

    void load(const std::string& text) { reader_.LoadFromFile(folder_.write("log.txt", text)); }
    LogRehearsal run() {
        LogRehearsal run(reader_, start_, live_);
        while (run.goOn()) {
        }
        return run;
    }
    static std::vector<std::uint8_t> mapOf(const LogRehearsal& run) {
        const auto map = run.rehearsal().map();
        return {map.begin(), map.end()};
    }
    static std::uint64_t counted(const LogRehearsal& run, Verdict verdict) {
        return run.rehearsal().agent().counted(verdict);
    }

    support::TempFolder folder_;
    core::LiveTable live_;
    logs::clsTXTdata reader_{live_, '.'};
    TinyCar car_{5};
    RehearsalStart start_;
};

TEST_F(LogRehearsalTest, ARecordedDriveGivesTheSameMapEachTime) {
    load(drive(car_, kNoon, 20000));
    const auto first = run();
    EXPECT_TRUE(first.hasProposal());
    EXPECT_GE(first.rehearsal().changedCells(), 5U);
    EXPECT_EQ(mapOf(first), mapOf(run()));
    EXPECT_THAT(first.words(), testing::StartsWith("The agent would change "));
    EXPECT_THAT(first.words(), testing::HasSubstr(" of 20000 rows used; most others: "));
}

// All cells are 8 per cent below the need.
TEST_F(LogRehearsalTest, ItIsChangedTowardsTheNeed) {
    load(drive(car_, kNoon, 20000));
    const auto map = mapOf(run());
    for (std::size_t at = 0; at < map.size(); ++at) {
        EXPECT_GE(map[at], start_.map[at]) << at;
        EXPECT_LE(map[at], TinyCar::needAt(TinyCar::centreOf(at)) * 1.03) << at;
    }
}

TEST_F(LogRehearsalTest, MidnightIsNoGap) {
    load(drive(car_, 24 * 3600 - 60, 5000));
    EXPECT_EQ(counted(run(), Verdict::LinkLate), 1U) << "the first row alone";
}

// Ten seconds are missing: the row behind them has no neighbour, and what the next rows of the exhaust's delay have
// measured was burnt while nothing was logged. For the agent's patience it is a second.
TEST_F(LogRehearsalTest, APauseOfTheLogIsAGapThatStopsNothing) {
    const auto before = drive(car_, kNoon, 4000);
    load(before + drive(car_, kNoon + 10, 4000));
    const auto done = run();
    constexpr auto kRowsOfASecond = 200U;
    EXPECT_GE(counted(done, Verdict::LinkLate), 2U);
    EXPECT_LT(counted(done, Verdict::LinkLate), kRowsOfASecond);
    EXPECT_FALSE(done.rehearsal().hasStopped());
}

TEST_F(LogRehearsalTest, RowsOfOneSecondAreEvenInIt) {
    load(drive(car_, kNoon, 2000));
    const auto done = run();
    EXPECT_EQ(counted(done, Verdict::LinkLate), 1U) << "rows at once would leave a gap in each second";
}

TEST_F(LogRehearsalTest, AValueThatIsCalibratedIsTheEcusNumberAgain) {
    auto& duty = live_.liveValues.at(core::indexOf(LiveChannel::InjectionDuty));
    TinyCar other{5};
    other.spoil(-8.0);
    load(drive(other, kNoon, 20000));
    const auto plain = mapOf(run());
    LogText log;
    for (int i = 0; i < 20000; ++i) {
        auto frame = car_.next();
        frame.duty = (frame.duty + 4.0) * 0.5;
        addRow(log, kNoon, frame);
    }
    load(log.text());
    duty.gain = 0.5;
    duty.offset = 4.0;
    EXPECT_EQ(mapOf(run()), plain);
}

TEST_F(LogRehearsalTest, ItSaysWhichColumnsAreMissing) {
    LogText log;
    for (int i = 0; i < 100; ++i) {
        log.row(kNoon + i / 10, {{7, "-.-"}, {8, "abc"}});
    }
    load(log.text());
    EXPECT_EQ(run().words(), "The log lacks what the agent needs: Lambda, InjTime.");
    EXPECT_FALSE(run().hasProposal());
}

TEST_F(LogRehearsalTest, ALogOfAnotherLayoutLacksItAll) {
    load("1 900 3\r\n2 900 3\r\n");
    EXPECT_EQ(run().words(),
              "The log lacks what the agent needs: Time, MAP, Throttle, Lambda, InjTime, Kartta, Debug.");
    load("Some other program's log\r\nrpm;lambda\r\n900;14.7\r\n");
    EXPECT_EQ(run().words(), "No row of the log can be read: there is nothing that the agent could do.");
}

TEST_F(LogRehearsalTest, ColumnsThatTheLoadDoesNotComeFromMayBeMissing) {
    start_.setup.throttleKnown = false;
    LogText log;
    for (int i = 0; i < 100; ++i) {
        log.row(kNoon + i / 10, {{6, "x"}});
    }
    load(log.text());
    EXPECT_TRUE(run().hasProposal());
    start_.load.fromThrottle = true;
    EXPECT_EQ(run().words(), "The log lacks what the agent needs: Throttle.");
}

TEST_F(LogRehearsalTest, AClockThatStandsIsNoTime) {
    LogText log;
    for (int i = 0; i < 1000; ++i) {
        log.row(kNoon);
    }
    load(log.text());
    EXPECT_EQ(run().words(), "The log lacks what the agent needs: Time.");
}

TEST_F(LogRehearsalTest, AnEmptyLogIsTold) {
    load("");
    EXPECT_EQ(run().words(), "The log has no rows: there is nothing that the agent could do.");
    EXPECT_FALSE(run().hasProposal());
}

TEST_F(LogRehearsalTest, AFileThatCannotBeOpenedBehindALoadedOneLeavesNoRows) {
    load(drive(car_, kNoon, 100));
    reader_.LoadFromFile(folder_.nowhere());
    ASSERT_EQ(reader_.ItemCount(), 100);
    EXPECT_EQ(run().words(), "No row of the log can be read: there is nothing that the agent could do.");
}

TEST_F(LogRehearsalTest, ALogThatWasNotReadToItsEndIsTold) {
    LogText log;
    log.row(kNoon).row(kNoon).row(kNoon, {{1, "x"}});
    load(log.text());
    EXPECT_THAT(run().words(), testing::EndsWith("(0 of 2 rows used; most others: link late, 1). "
                                                 "The log was not read any further."));
}

TEST_F(LogRehearsalTest, AStopIsToldWithItsRow) {
    auto text = drive(car_, kNoon, 6000);
    car_.setFault(TinyCar::Fault::Stuck);
    load(text + drive(car_, kNoon, 3000));
    const auto done = run();
    EXPECT_TRUE(done.rehearsal().hasStopped());
    EXPECT_THAT(done.words(), testing::MatchesRegex("The agent would stop at row 6[0-9]*, 12:[0-9:]*: lambda.*"));
}

// A day at one row a second is nearly all that the viewer loads; parts of it leave the program free in between.
TEST_F(LogRehearsalTest, ALogOfADayIsTakenInParts) {
    LogText log;
    for (int second = 0; second < 86400; ++second) {
        log.row(second);
    }
    load(log.text());
    LogRehearsal run(reader_, start_, live_);
    int parts = 1;
    double share = 0.0;
    while (run.goOn()) {
        EXPECT_GT(run.share(), share);
        EXPECT_LT(run.share() - share, 0.03);
        share = run.share();
        ++parts;
    }
    EXPECT_GE(parts, 40);
    EXPECT_EQ(run.share(), 1.0);
    EXPECT_THAT(run.words(), testing::HasSubstr("no cell (0 of 86400 rows used; most others: link late, 86400)"));
}

}  // namespace
}  // namespace korvane::analysis
