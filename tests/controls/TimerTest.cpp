#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/Timer.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TimerTest : public ModelBench {
protected:
    TimerTest() {
        window_.load();
        timer_.Tick = [this] { ticks_.push_back(pump_.milliseconds()); };
    }
    Timer timer_{window_, "Timer1", false, 100};
    std::vector<std::int64_t> ticks_;
};

TEST_F(TimerTest, DoesNotTickUntilItIsEnabled) {
    pump_.wait(1000);
    EXPECT_THAT(ticks_, IsEmpty());
}

TEST_F(TimerTest, TicksFirstAfterItsIntervalAndThenEachInterval) {
    timer_.Enabled = true;
    pump_.wait(99);
    EXPECT_THAT(ticks_, IsEmpty());
    pump_.wait(251);
    EXPECT_THAT(ticks_, ElementsAre(100, 200, 300));
}

TEST_F(TimerTest, OneThatIsEnabledByDesignTicksFromItsCreation) {
    Timer other(window_, "Timer2", true, 40);
    other.Tick = [this] { ticks_.push_back(pump_.milliseconds()); };
    pump_.wait(80);
    EXPECT_THAT(ticks_, ElementsAre(40, 80));
}

TEST_F(TimerTest, AnIntervalOfZeroNeverTicks) {
    timer_.Interval = 0;
    timer_.Enabled = true;
    pump_.wait(1000);
    EXPECT_THAT(ticks_, IsEmpty());
    timer_.Interval = 300;
    pump_.wait(300);
    EXPECT_THAT(ticks_, ElementsAre(1300));
}

TEST_F(TimerTest, ANegativeIntervalNeverTicks) {
    timer_.Interval = -5;
    timer_.Enabled = true;
    pump_.wait(1000);
    EXPECT_THAT(ticks_, IsEmpty());
}

TEST_F(TimerTest, SwitchingItOffAndOnStartsTheCountAnew) {
    timer_.Enabled = true;
    pump_.wait(60);
    timer_.Enabled = false;
    timer_.Enabled = true;
    pump_.wait(100);
    EXPECT_THAT(ticks_, ElementsAre(160));
}

TEST_F(TimerTest, EnablingAnEnabledOneChangesNothing) {
    timer_.Enabled = true;
    pump_.wait(60);
    timer_.Enabled = true;
    pump_.wait(40);
    EXPECT_THAT(ticks_, ElementsAre(100));
}

TEST_F(TimerTest, ANewIntervalStartsTheCountAnew) {
    timer_.Enabled = true;
    pump_.wait(60);
    timer_.Interval = 250;
    pump_.wait(300);
    EXPECT_THAT(ticks_, ElementsAre(310));
}

TEST_F(TimerTest, ARestartCountsAnewAlsoWithTheSameInterval) {
    timer_.restart(100);
    pump_.wait(60);
    timer_.restart(100);
    pump_.wait(100);
    EXPECT_TRUE(timer_.Enabled);
    EXPECT_THAT(ticks_, ElementsAre(160));
}

TEST_F(TimerTest, AHandlerMaySwitchItOff) {
    timer_.Tick = [this] {
        ticks_.push_back(pump_.milliseconds());
        timer_.Enabled = false;
    };
    timer_.Enabled = true;
    pump_.wait(1000);
    EXPECT_THAT(ticks_, ElementsAre(100));
}

TEST_F(TimerTest, AHandlerMayChangeTheInterval) {
    timer_.Tick = [this] {
        ticks_.push_back(pump_.milliseconds());
        timer_.Interval = 300;
    };
    timer_.Enabled = true;
    pump_.wait(800);
    EXPECT_THAT(ticks_, ElementsAre(100, 400, 700));
}

TEST_F(TimerTest, TicksThatCameTooLateAreDropped) {
    timer_.Enabled = true;
    pump_.sleep(350);
    EXPECT_THAT(ticks_, IsEmpty()) << "nothing runs while the program blocks";
    pump_.wait(300);
    EXPECT_THAT(ticks_, ElementsAre(350, 450, 550, 650));
}

TEST_F(TimerTest, ATickInsideAHandlersWaitRunsNested) {
    int depth = 0;
    int deepest = 0;
    timer_.Tick = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth == 1 && ticks_.empty()) {
            ticks_.push_back(pump_.milliseconds());
            pump_.wait(150);
        }
        --depth;
    };
    timer_.Enabled = true;
    pump_.wait(400);
    EXPECT_EQ(deepest, 2);
}

TEST_F(TimerTest, AFailingTickIsLoggedAndTheNextOneComes) {
    timer_.Tick = [this] {
        ticks_.push_back(pump_.milliseconds());
        throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
    };
    timer_.Enabled = true;
    pump_.wait(200);
    EXPECT_EQ(ticks_.size(), 2U);
    EXPECT_THAT(log_.lines, ElementsAre("frmTest.Timer1: Overflow", "frmTest.Timer1: Overflow"));
}

TEST_F(TimerTest, GoesAwayWithItsTicks) {
    {
        Timer other(window_, "Timer2", true, 10);
        other.Tick = [this] { ticks_.push_back(0); };
    }
    pump_.wait(100);
    EXPECT_THAT(ticks_, IsEmpty());
}

}  // namespace
}  // namespace korvane::controls
