#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VirtualPumpTest : public testing::Test {
protected:
    // An alarm that notes its name and the millisecond at which it was called.
    std::unique_ptr<Alarm> note(const std::string& name, AlarmKind kind = AlarmKind::Program) {
        return pump.makeAlarm([this, name] { notes.push_back(name + " " + std::to_string(pump.milliseconds())); },
                              kind);
    }
    void at(const std::unique_ptr<Alarm>& alarm, int milliseconds) { alarm->callAt(milliseconds * kMicrosPerMilli); }

    VirtualPump pump;
    std::vector<std::string> notes;
};

TEST_F(VirtualPumpTest, AWaitJumpsFromAlarmToAlarmAndEndsAtItsOwnMoment) {
    const auto late = note("late");
    const auto early = note("early");
    at(late, 300);
    at(early, 20);
    pump.wait(299);
    EXPECT_THAT(notes, ElementsAre("early 20"));
    EXPECT_EQ(pump.milliseconds(), 299);
    pump.wait(1);
    EXPECT_THAT(notes, ElementsAre("early 20", "late 300"));
}

TEST_F(VirtualPumpTest, OneMomentIsServedInTheOrderOfAsking) {
    const auto one = note("one");
    const auto two = note("two");
    const auto device = note("device", AlarmKind::Device);
    at(two, 5);
    at(device, 5);
    at(one, 5);
    pump.wait(5);
    EXPECT_THAT(notes, ElementsAre("two 5", "device 5", "one 5"));
}

TEST_F(VirtualPumpTest, ANewMomentReplacesTheOldOneAndCancellingForgetsIt) {
    const auto moved = note("moved");
    const auto cancelled = note("cancelled");
    at(moved, 5);
    at(moved, 9);
    at(cancelled, 5);
    cancelled->cancel();
    pump.wait(20);
    EXPECT_THAT(notes, ElementsAre("moved 9"));
}

TEST_F(VirtualPumpTest, AMomentThatHasPassedComesAtTheNextChance) {
    pump.wait(50);
    const auto alarm = note("alarm");
    at(alarm, 10);
    EXPECT_THAT(notes, IsEmpty());
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("alarm 50"));
}

TEST_F(VirtualPumpTest, APumpServesWhatIsDueAndNothingThatIsAskedForMeanwhile) {
    std::unique_ptr<Alarm> again = pump.makeAlarm([&] {
        notes.emplace_back("again");
        again->callAt(pump.now());
    });
    const auto other = note("other");
    const auto later = note("later");
    again->callAt(0);
    at(other, 0);
    at(later, 1);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("again", "other 0"));
    EXPECT_EQ(pump.now(), 0);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("again", "other 0", "again"));
}

TEST_F(VirtualPumpTest, ASleepRunsTheDeviceAndNoHandler) {
    const auto program = note("program");
    const auto device = note("device", AlarmKind::Device);
    at(program, 10);
    at(device, 20);
    pump.sleep(50);
    EXPECT_THAT(notes, ElementsAre("device 20"));
    EXPECT_EQ(pump.milliseconds(), 50);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre("device 20", "program 50"));
}

TEST_F(VirtualPumpTest, AWaitInsideAHandlerMayOutlastTheOuterOne) {
    const auto waiting = pump.makeAlarm([&] {
        pump.wait(300);
        notes.push_back("through " + std::to_string(pump.milliseconds()));
    });
    const auto inside = note("inside");
    at(waiting, 10);
    at(inside, 200);
    pump.wait(50);
    EXPECT_THAT(notes, ElementsAre("inside 200", "through 310"));
    EXPECT_EQ(pump.milliseconds(), 310);
}

TEST_F(VirtualPumpTest, AnAlarmMayDeleteItselfInItsCall) {
    std::unique_ptr<Alarm> alarm;
    const std::string text(100, 'x');
    alarm = pump.makeAlarm([&alarm, &notes = notes, text] {
        auto& kept = notes;
        alarm.reset();
        kept.push_back(text);
    });
    alarm->callAt(0);
    pump.pump();
    EXPECT_THAT(notes, ElementsAre(text));
}

TEST_F(VirtualPumpTest, AnAlarmDeletedByAnotherOfItsMomentIsNotCalled) {
    std::unique_ptr<Alarm> victim = note("victim");
    const auto deleting = pump.makeAlarm([&] { victim.reset(); });
    deleting->callAt(0);
    victim->callAt(0);
    pump.pump();
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(VirtualPumpTest, TheCalendarFollowsTheClock) {
    VirtualPump evening({2026, 2, 28, 23, 59, 58});
    evening.wait(1999);
    EXPECT_EQ(evening.wallTime(), (WallTime{2026, 2, 28, 23, 59, 59}));
    evening.wait(1);
    EXPECT_EQ(evening.wallTime(), (WallTime{2026, 3, 1, 0, 0, 0}));
}

}  // namespace
}  // namespace korvane::platform
