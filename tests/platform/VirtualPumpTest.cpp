#include <gmock/gmock.h>
#include <string>

#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Micros kPatience = 1000 * kMicrosPerMilli;

class VirtualPumpTest : public testing::Test {
protected:
    // An alarm that notes its name when it calls.
    Alarm& noting(const std::string& name, AlarmKind kind = AlarmKind::Program) {
        alarms_.push_back(pump_.makeAlarm([this, name] { calls_.push_back(name); }, kind));
        return *alarms_.back();
    }
    Alarm& calling(std::function<void()> what) {
        alarms_.push_back(pump_.makeAlarm(std::move(what)));
        return *alarms_.back();
    }
    static Micros ms(int milliseconds) { return milliseconds * kMicrosPerMilli; }

    VirtualPump pump_;
    std::vector<std::unique_ptr<Alarm>> alarms_;
    std::vector<std::string> calls_;
};

TEST_F(VirtualPumpTest, TheClockStartsAtZeroAndStandsStill) {
    EXPECT_EQ(pump_.now(), 0);
    pump_.pump();
    EXPECT_EQ(pump_.now(), 0);
}

TEST_F(VirtualPumpTest, SettledComesBehindWhatFallsDueWhileOthersTakeTheirTime) {
    auto& second = noting("second");
    auto& later = noting("later");
    auto& first = calling([&] {
        calls_.emplace_back("first");
        pump_.sleep(300);
    });
    first.callAt(0);
    second.callAt(ms(299));
    later.callAt(ms(301));
    pump_.whenSettled([&] { calls_.emplace_back("settled"); }, kPatience);
    EXPECT_THAT(calls_, ElementsAre("first", "second", "settled"));
    EXPECT_EQ(pump_.now(), ms(300));
}

// One asks for itself again at once, the other takes longer than its period.
TEST_F(VirtualPumpTest, EventsThatAlwaysAskForMoreDoNotHoldUpTheSettling) {
    int calls = 0;
    auto& restless = calling([&] {
        ++calls;
        alarms_.front()->callAt(pump_.now());
    });
    restless.callAt(0);
    bool settled = false;
    pump_.whenSettled([&] { settled = true; }, kPatience);
    EXPECT_TRUE(settled);
    EXPECT_EQ(calls, 100'000);
    restless.cancel();
    auto& slow = calling([&] {
        pump_.sleep(300);
        alarms_.back()->callAt(pump_.now());
    });
    slow.callAt(0);
    pump_.whenSettled([] {}, kPatience);
    EXPECT_EQ(pump_.now(), ms(600'300));
}

TEST_F(VirtualPumpTest, TheWallClockGoesWithIt) {
    EXPECT_EQ(pump_.wallTime(), (WallTime{2026, 1, 5, 12, 0, 0}));
    pump_.wait(999);
    EXPECT_EQ(pump_.wallTime().second, 0);
    pump_.wait(1);
    EXPECT_EQ(pump_.wallTime().second, 1);
    VirtualPump other(WallTime{2027, 12, 31, 23, 59, 59});
    other.wait(1000);
    EXPECT_EQ(other.wallTime(), (WallTime{2028, 1, 1, 0, 0, 0}));
}

TEST_F(VirtualPumpTest, AJumpOfTheWallClockMovesNoEvent) {
    calling([this] { pump_.shiftWallTime(-3600); }).callAt(ms(500));
    noting("a").callAt(ms(1000));
    pump_.wait(999);
    EXPECT_EQ(pump_.wallTime(), (WallTime{2026, 1, 5, 11, 0, 0}));
    EXPECT_THAT(calls_, IsEmpty());
    pump_.wait(1);
    EXPECT_THAT(calls_, ElementsAre("a"));
    EXPECT_EQ(pump_.now(), ms(1000));
    pump_.shiftWallTime(7200);
    EXPECT_EQ(pump_.wallTime(), (WallTime{2026, 1, 5, 13, 0, 1}));
}

TEST_F(VirtualPumpTest, AWaitPassesItsTimeAndRunsWhatIsDue) {
    noting("a").callAt(ms(50));
    noting("b").callAt(ms(100));
    noting("c").callAt(ms(100) + 1);
    pump_.wait(100);
    EXPECT_THAT(calls_, ElementsAre("a", "b"));
    EXPECT_EQ(pump_.now(), ms(100));
}

TEST_F(VirtualPumpTest, AHandlerSeesTheMomentForWhichItAsked) {
    Micros seen = -1;
    calling([&] { seen = pump_.now(); }).callAt(1234);
    pump_.wait(10);
    EXPECT_EQ(seen, 1234);
}

TEST_F(VirtualPumpTest, CallsComeInOrderOfTimeAndThenOfAsking) {
    noting("late").callAt(ms(20));
    noting("first").callAt(ms(10));
    noting("second", AlarmKind::Device).callAt(ms(10));
    noting("third", AlarmKind::Command).callAt(ms(10));
    noting("fourth").callAt(ms(10));
    pump_.wait(30);
    EXPECT_THAT(calls_, ElementsAre("first", "second", "third", "fourth", "late"));
}

TEST_F(VirtualPumpTest, AskingAgainReplacesTheEarlierMomentAndQueuesBehind) {
    auto& a = noting("a");
    a.callAt(ms(10));
    noting("b").callAt(ms(10));
    a.callAt(ms(10));
    pump_.wait(100);
    EXPECT_THAT(calls_, ElementsAre("b", "a"));
}

TEST_F(VirtualPumpTest, AMomentThatHasPassedIsTheNextChance) {
    pump_.wait(100);
    noting("a").callAt(ms(10));
    pump_.pump();
    EXPECT_THAT(calls_, ElementsAre("a"));
    EXPECT_EQ(pump_.now(), ms(100));
}

TEST_F(VirtualPumpTest, AMomentThatHasPassedQueuesBehindWhatIsDueNow) {
    pump_.wait(30);
    noting("now").callAt(ms(30));
    noting("passed").callAt(ms(10));
    pump_.pump();
    EXPECT_THAT(calls_, ElementsAre("now", "passed"));
}

TEST_F(VirtualPumpTest, ACancelledAlarmDoesNotCall) {
    auto& a = noting("a");
    a.callAt(ms(10));
    a.cancel();
    a.cancel();
    pump_.wait(100);
    EXPECT_THAT(calls_, IsEmpty());
    a.callAt(ms(150));
    pump_.wait(100);
    EXPECT_THAT(calls_, ElementsAre("a"));
}

TEST_F(VirtualPumpTest, AnAlarmThatIsGoneDoesNotCall) {
    noting("a").callAt(ms(10));
    alarms_.clear();
    pump_.wait(100);
    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(VirtualPumpTest, AnAlarmMayDeleteItselfInItsCall) {
    std::unique_ptr<Alarm> alarm;
    const std::string text(100, 'x');
    alarm = pump_.makeAlarm([&alarm, &calls = calls_, text] {
        auto& kept = calls;
        alarm.reset();
        kept.push_back(text);
    });
    alarm->callAt(0);
    pump_.pump();
    EXPECT_THAT(calls_, ElementsAre(text));
}

TEST_F(VirtualPumpTest, AnAlarmDeletedByAnotherOfItsMomentIsNotCalled) {
    bool called = false;
    std::unique_ptr<Alarm> victim = pump_.makeAlarm([&] { called = true; });
    calling([&] { victim.reset(); }).callAt(0);
    victim->callAt(0);
    pump_.pump();
    EXPECT_FALSE(called);
}

TEST_F(VirtualPumpTest, APumpRunsWhatIsDueOnce) {
    Alarm* again = nullptr;
    int calls = 0;
    again = &calling([&] {
        ++calls;
        again->callAt(pump_.now());
    });
    again->callAt(0);
    noting("other").callAt(0);
    pump_.pump();
    EXPECT_EQ(calls, 1) << "what the events ask for waits for the next chance";
    EXPECT_THAT(calls_, ElementsAre("other"));
    pump_.pump();
    EXPECT_EQ(calls, 2);
}

TEST_F(VirtualPumpTest, APumpDoesNotRunTheFuture) {
    noting("a").callAt(1);
    pump_.pump();
    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(VirtualPumpTest, AHandlerThatWaitsLetsOthersRunInsideIt) {
    calling([&] {
        calls_.emplace_back("begin");
        pump_.wait(100);
        calls_.emplace_back("end");
    }).callAt(ms(10));
    noting("inside").callAt(ms(60));
    noting("behind").callAt(ms(111));
    pump_.wait(200);
    EXPECT_THAT(calls_, ElementsAre("begin", "inside", "end", "behind"));
    EXPECT_EQ(pump_.now(), ms(200));
}

TEST_F(VirtualPumpTest, AHandlerThatWaitsPastTheOuterWaitMovesTheClockOn) {
    calling([&] { pump_.wait(500); }).callAt(ms(10));
    pump_.wait(100);
    EXPECT_EQ(pump_.now(), ms(510));
}

TEST_F(VirtualPumpTest, ASleepRunsDeviceAlarmsOnly) {
    noting("program").callAt(ms(10));
    noting("command", AlarmKind::Command).callAt(ms(15));
    noting("device", AlarmKind::Device).callAt(ms(20));
    pump_.sleep(100);
    EXPECT_THAT(calls_, ElementsAre("device"));
    EXPECT_EQ(pump_.now(), ms(100));
    pump_.pump();
    EXPECT_THAT(calls_, ElementsAre("device", "program", "command"));
}

TEST_F(VirtualPumpTest, ASleepInsideAHandlerBlocksToo) {
    calling([&] {
        pump_.sleep(100);
        calls_.emplace_back("awake");
    }).callAt(ms(10));
    noting("program").callAt(ms(20));
    noting("device", AlarmKind::Device).callAt(ms(30));
    pump_.wait(50);
    EXPECT_THAT(calls_, ElementsAre("device", "awake", "program"));
    EXPECT_EQ(pump_.now(), ms(110));
}

TEST_F(VirtualPumpTest, ANegativeWaitIsNone) {
    noting("a").callAt(0);
    pump_.wait(-5);
    EXPECT_EQ(pump_.now(), 0);
    pump_.sleep(-5);
    EXPECT_EQ(pump_.now(), 0);
}

TEST_F(VirtualPumpTest, RunUntilStopsAtAMicrosecond) {
    noting("a").callAt(1000);
    pump_.runUntil(999);
    EXPECT_THAT(calls_, IsEmpty());
    pump_.runUntil(1000);
    EXPECT_THAT(calls_, ElementsAre("a"));
    pump_.runUntil(10);
    EXPECT_EQ(pump_.now(), 1000) << "the clock never goes back";
}

}  // namespace
}  // namespace korvane::platform
