#include <gmock/gmock.h>
#include <vector>

#include "platform/Bench.h"
#include "platform/Timer.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TimerTest : public Bench {
protected:
    TimerTest() {
        timer.Tick = [this] { ticks.push_back(pump.milliseconds()); };
    }

    Timer timer{window, "Timer1", false, 100};
    std::vector<std::int64_t> ticks;
};

TEST_F(TimerTest, TicksAtEachIntervalWhileItIsOn) {
    pump.wait(50);
    EXPECT_THAT(ticks, IsEmpty());
    timer.Enabled = true;
    pump.wait(250);
    timer.Enabled = false;
    pump.wait(1000);
    EXPECT_THAT(ticks, ElementsAre(150, 250));
}

TEST_F(TimerTest, ANewIntervalCountsFromNow) {
    timer.Enabled = true;
    pump.wait(90);
    timer.Interval = 30;
    pump.wait(60);
    EXPECT_THAT(ticks, ElementsAre(120, 150));
}

TEST_F(TimerTest, TheSameIntervalAgainChangesNothing) {
    timer.Enabled = true;
    pump.wait(90);
    timer.Interval = 100;
    timer.Enabled = true;
    pump.wait(10);
    EXPECT_THAT(ticks, ElementsAre(100));
}

TEST_F(TimerTest, ARestartCountsAnewThoughItRuns) {
    timer.Enabled = true;
    pump.wait(90);
    timer.restart(100);
    pump.wait(100);
    EXPECT_THAT(ticks, ElementsAre(190));
}

TEST_F(TimerTest, AnIntervalOfNothingNeverTicks) {
    timer.Enabled = true;
    timer.Interval = 0;
    pump.wait(1000);
    timer.Interval = -5;
    pump.wait(1000);
    EXPECT_THAT(ticks, IsEmpty());
}

TEST_F(TimerTest, TicksThatCouldNotBeServedAreNotMadeUpFor) {
    timer.Enabled = true;
    pump.sleep(350);
    pump.wait(100);
    EXPECT_THAT(ticks, ElementsAre(350, 450));
}

TEST_F(TimerTest, ItsHandlerMaySwitchItOff) {
    timer.Tick = [this] {
        ticks.push_back(pump.milliseconds());
        timer.Enabled = false;
    };
    timer.Enabled = true;
    pump.wait(1000);
    EXPECT_THAT(ticks, ElementsAre(100));
}

TEST_F(TimerTest, ItTicksInsideItsOwnHandlersWait) {
    timer.Tick = [this] {
        ticks.push_back(pump.milliseconds());
        if (ticks.size() == 1) {
            pump.wait(250);
        }
    };
    timer.Enabled = true;
    pump.wait(100);
    EXPECT_THAT(ticks, ElementsAre(100, 200, 300));
}

TEST_F(TimerTest, AFailingHandlerIsLoggedAndTheTimerGoesOn) {
    timer.Tick = [this] {
        ticks.push_back(pump.milliseconds());
        throw RuntimeError(kErrorOverflow, "Overflow");
    };
    timer.Enabled = true;
    pump.wait(200);
    EXPECT_THAT(ticks, ElementsAre(100, 200));
    EXPECT_THAT(log.lines, ElementsAre("frmTest.Timer1: Overflow", "frmTest.Timer1: Overflow"));
}

}  // namespace
}  // namespace korvane::platform
