#include <QCoreApplication>
#include <QDateTime>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/QtPump.h"
#include "qt/Until.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Micros kPatience = 500 * kMicrosPerMilli;

class QtPumpTest : public testing::Test {
protected:
    // Turns of the outermost event loop until that many notes are there; two seconds at most.
    void turnUntil(std::size_t count) {
        const Micros end = pump.now() + 2'000'000;
        while (notes.size() < count && pump.now() < end) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
    }
    std::unique_ptr<Alarm> note(const std::string& name, AlarmKind kind = AlarmKind::Program) {
        return pump.makeAlarm([this, name] { notes.push_back(name); }, kind);
    }

    QtPump pump;
    std::vector<std::string> notes;
};

TEST_F(QtPumpTest, DueAlarmWaitsForTheLoop) {
    const auto alarm = note("a");
    alarm->callAt(pump.now());
    EXPECT_THAT(notes, IsEmpty());
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("a"));
}

TEST_F(QtPumpTest, AlarmCallsOnce) {
    const auto alarm = note("a");
    alarm->callAt(pump.now());
    pump.pump();
    pump.wait(2);
    EXPECT_THAT(notes, ElementsAre("a"));
}

TEST_F(QtPumpTest, AlarmsRunInOrderOfTheirMoments) {
    const auto late = note("late");
    const auto early = note("early");
    const auto middle = note("middle");
    const Micros now = pump.now();
    late->callAt(now + 900);
    early->callAt(now + 100);
    middle->callAt(now + 500);
    pump.sleep(1);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("early", "middle", "late"));
}

TEST_F(QtPumpTest, AlarmsOfOneMomentRunInOrderOfAsking) {
    const auto one = note("one", AlarmKind::Device);
    const auto two = note("two");
    const auto three = note("three", AlarmKind::Device);
    const Micros due = pump.now() + 100;
    three->callAt(due);
    one->callAt(due);
    two->callAt(due);
    pump.sleep(1);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("three", "one", "two"));
}

TEST_F(QtPumpTest, NoAlarmIsEarly) {
    std::vector<Micros> dues;
    std::vector<Micros> calls;
    std::vector<std::unique_ptr<Alarm>> alarms;
    for (Micros i = 0; i < 40; ++i) {
        dues.push_back(pump.now() + 1000 + 137 * i);
        alarms.push_back(pump.makeAlarm([&] { calls.push_back(pump.now()); }));
        alarms.back()->callAt(dues.back());
    }
    ASSERT_TRUE(until(pump, [&] { return calls.size() == dues.size(); }));
    for (std::size_t i = 0; i < dues.size(); ++i) {
        EXPECT_GE(calls[i], dues[i]);
    }
}

TEST_F(QtPumpTest, LaterMomentReplacesTheEarlierOne) {
    const auto alarm = note("a");
    alarm->callAt(pump.now());
    const Micros due = pump.now() + 3000;
    alarm->callAt(due);
    pump.pump();
    EXPECT_THAT(notes, IsEmpty());
    ASSERT_TRUE(until(pump, [&] { return !notes.empty(); }));
    EXPECT_GE(pump.now(), due);
}

TEST_F(QtPumpTest, EarlierMomentReplacesTheLaterOne) {
    const auto alarm = note("a");
    alarm->callAt(pump.now() + 3'600'000'000);
    alarm->callAt(pump.now() + 1000);
    EXPECT_TRUE(until(pump, [&] { return !notes.empty(); }));
}

TEST_F(QtPumpTest, CancelledAlarmDoesNotCall) {
    const auto alarm = note("a");
    alarm->callAt(pump.now());
    alarm->cancel();
    pump.wait(2);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(QtPumpTest, AlarmThatAsksAgainWaitsForTheNextPump) {
    std::unique_ptr<Alarm> alarm;
    int calls = 0;
    alarm = pump.makeAlarm([&] {
        ++calls;
        alarm->callAt(pump.now());
    });
    alarm->callAt(pump.now());
    pump.pump();
    EXPECT_EQ(calls, 1);
    pump.pump();
    EXPECT_EQ(calls, 2);
}

TEST_F(QtPumpTest, AlarmThatAlwaysAsksAgainDoesNotStopTheOthers) {
    std::unique_ptr<Alarm> restless;
    restless = pump.makeAlarm([&] { restless->callAt(pump.now()); });
    restless->callAt(pump.now());
    const auto other = note("other");
    other->callAt(pump.now() + 2000);
    EXPECT_TRUE(until(pump, [&] { return !notes.empty(); }));
}

TEST_F(QtPumpTest, WaitLastsAndLetsAlarmsRun) {
    const auto alarm = note("a");
    const Micros start = pump.now();
    alarm->callAt(start + 1000);
    pump.wait(5);
    EXPECT_GE(pump.now() - start, 5000);
    EXPECT_THAT(notes, ElementsAre("a"));
}

TEST_F(QtPumpTest, WaitOfNoTimeRunsWhatIsDue) {
    const auto alarm = note("a");
    alarm->callAt(pump.now());
    pump.wait(0);
    EXPECT_THAT(notes, ElementsAre("a"));
}

TEST_F(QtPumpTest, SleepLastsAndLetsNoHandlerRun) {
    const auto alarm = note("a");
    const Micros start = pump.now();
    alarm->callAt(start);
    pump.sleep(3);
    EXPECT_GE(pump.now() - start, 3000);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(QtPumpTest, WindowsGoOnPaintingInASleepAndHandlersAndCommandsWait) {
    int frames = 0;
    QTimer frame;
    QObject::connect(&frame, &QTimer::timeout, &frame, [&] { ++frames; });
    frame.start(1);
    const auto handler = note("handler");
    const auto command = note("command", AlarmKind::Command);
    const auto device = note("device", AlarmKind::Device);
    for (const auto* alarm : {&handler, &command, &device}) {
        (*alarm)->callAt(pump.now());
    }
    pump.sleep(20);
    EXPECT_GE(frames, 2);
    EXPECT_THAT(notes, ElementsAre("device"));
    pump.wait(1);
    EXPECT_THAT(notes, ElementsAre("device", "handler", "command"));
}

TEST_F(QtPumpTest, CommandsAreServedAndSettleDuringAHold) {
    const auto handler = note("handler");
    const auto command = note("command", AlarmKind::Command);
    const QtPump::Hold hold(pump);
    handler->callAt(pump.now());
    command->callAt(pump.now());
    pump.whenSettled([&] { notes.emplace_back("settled"); }, kPatience);
    turnUntil(2);
    EXPECT_THAT(notes, ElementsAre("command", "settled"));
}

TEST_F(QtPumpTest, SettledComesBehindAllThatIsDueAndWhatTheyAskFor) {
    std::unique_ptr<Alarm> due;
    const auto later = note("later");
    due = pump.makeAlarm([&] {
        notes.emplace_back("due");
        later->callAt(pump.now());
    });
    due->callAt(pump.now());
    pump.whenSettled([&] { notes.emplace_back("settled"); }, kPatience);
    EXPECT_THAT(notes, IsEmpty());
    turnUntil(3);
    EXPECT_THAT(notes, ElementsAre("due", "later", "settled"));
}

TEST_F(QtPumpTest, SettledComesBehindTheWaitsOfWhatWasDue) {
    const auto waiting = pump.makeAlarm([&] {
        pump.wait(30);
        notes.emplace_back("waited");
    });
    const auto begin = pump.now();
    waiting->callAt(begin);
    pump.whenSettled([&] { notes.emplace_back("settled"); }, kPatience);
    turnUntil(2);
    EXPECT_LT(pump.now() - begin, kPatience);
    EXPECT_THAT(notes, ElementsAre("waited", "settled"));
}

TEST_F(QtPumpTest, SettledComesWhenPatienceEndsThoughEventsDoNot) {
    std::unique_ptr<Alarm> restless;
    restless = pump.makeAlarm([&] { restless->callAt(pump.now()); });
    restless->callAt(pump.now());
    const auto begin = pump.now();
    pump.whenSettled([&] { notes.emplace_back("settled"); }, 20 * kMicrosPerMilli);
    turnUntil(1);
    EXPECT_THAT(notes, ElementsAre("settled"));
    EXPECT_GE(pump.now() - begin, 20 * kMicrosPerMilli);
}

TEST_F(QtPumpTest, WaitInsideAnAlarmLetsTheOthersRun) {
    const auto waiting = pump.makeAlarm([&] {
        notes.emplace_back("begin");
        pump.wait(3);
        notes.emplace_back("end");
    });
    const auto sameTime = note("same time");
    const auto later = note("later");
    const Micros now = pump.now();
    waiting->callAt(now);
    sameTime->callAt(now);
    later->callAt(now + 1000);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("begin", "same time", "later", "end"));
}

TEST_F(QtPumpTest, LoopThatAnAlarmNestsRunsTheOthers) {
    const auto nesting = pump.makeAlarm([&] {
        QCoreApplication::processEvents();
        notes.emplace_back("end");
    });
    const auto other = note("other");
    const Micros now = pump.now();
    nesting->callAt(now);
    other->callAt(now);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("other", "end"));
}

TEST_F(QtPumpTest, AlarmMayDeleteItselfInItsCall) {
    std::unique_ptr<Alarm> alarm;
    alarm = pump.makeAlarm([this, &alarm, name = std::string(100, 'a')] {
        alarm.reset();
        notes.push_back(name);
    });
    alarm->callAt(pump.now());
    pump.wait(1);
    EXPECT_THAT(notes, ElementsAre(std::string(100, 'a')));
}

TEST_F(QtPumpTest, AlarmDeletedByAnotherOfItsMomentDoesNotCall) {
    auto victim = note("victim");
    const auto killer = pump.makeAlarm([&] { victim.reset(); });
    const Micros now = pump.now();
    killer->callAt(now);
    victim->callAt(now);
    pump.wait(1);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(QtPumpTest, HeldProgramAlarmRunsOnceAfterwards) {
    const auto program = note("program");
    {
        const QtPump::Hold hold(pump);
        program->callAt(pump.now());
        pump.wait(2);
        program->callAt(pump.now());
        pump.wait(2);
        EXPECT_THAT(notes, IsEmpty());
    }
    EXPECT_THAT(notes, IsEmpty());
    pump.wait(2);
    EXPECT_THAT(notes, ElementsAre("program"));
}

TEST_F(QtPumpTest, HeldAlarmNeedsNobodyToAskForItAfterwards) {
    const auto program = note("program");
    {
        const QtPump::Hold hold(pump);
        program->callAt(pump.now());
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(notes, ElementsAre("program"));
}

TEST_F(QtPumpTest, AlarmThatWasPostedBeforeTheHoldIsHeldToo) {
    const auto program = note("program");
    program->callAt(pump.now());
    {
        const QtPump::Hold hold(pump);
        pump.wait(2);
        EXPECT_THAT(notes, IsEmpty());
    }
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("program"));
}

TEST_F(QtPumpTest, DeviceAlarmRunsDuringAHold) {
    const auto program = note("program");
    const auto device = note("device", AlarmKind::Device);
    const QtPump::Hold hold(pump);
    program->callAt(pump.now());
    device->callAt(pump.now() + 500);
    pump.wait(2);
    EXPECT_THAT(notes, ElementsAre("device"));
}

TEST_F(QtPumpTest, AlarmCancelledDuringAHoldDoesNotCall) {
    const auto program = note("program");
    {
        const QtPump::Hold hold(pump);
        program->callAt(pump.now());
        pump.wait(1);
        program->cancel();
    }
    pump.wait(1);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(QtPumpTest, OuterHoldOutlastsTheInnerOne) {
    const auto program = note("program");
    const QtPump::Hold outer(pump);
    { const QtPump::Hold inner(pump); }
    program->callAt(pump.now());
    pump.wait(1);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(QtPumpTest, ClockStartsWithThePump) {
    pump.sleep(1);
    const QtPump fresh;
    EXPECT_GE(fresh.now(), 0);
    EXPECT_LT(fresh.now(), pump.now());
}

TEST_F(QtPumpTest, WallTimeIsLocalTime) {
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    const WallTime wall = pump.wallTime();
    const qint64 after = QDateTime::currentSecsSinceEpoch();
    const QDateTime told(QDate(wall.year, wall.month, wall.day), QTime(wall.hour, wall.minute, wall.second));
    EXPECT_GE(told.toSecsSinceEpoch(), before);
    EXPECT_LE(told.toSecsSinceEpoch(), after);
}

}  // namespace
}  // namespace korvane::platform
