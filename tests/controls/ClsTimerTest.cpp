#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "controls/clsTimer.h"
#include "platform/RuntimeError.h"
#include "platform/virtual/VirtualPump.h"
#include "support/MemoryLog.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClsTimerTest : public testing::Test {
protected:
    ClsTimerTest() {
        timer_.TimerElapsed = [this] { ticks_.push_back(pump_.milliseconds()); };
    }

    platform::VirtualPump pump_;
    support::MemoryLog log_;
    clsTimer timer_{pump_, log_};
    std::vector<std::int64_t> ticks_;
};

TEST_F(ClsTimerTest, ElapsesEveryIntervalOnceStarted) {
    timer_.Interval = 300;
    pump_.wait(1000);
    EXPECT_THAT(ticks_, IsEmpty());
    timer_.StartTimer();
    pump_.wait(1000);
    EXPECT_THAT(ticks_, ElementsAre(1300, 1600, 1900));
}

TEST_F(ClsTimerTest, StartingItAgainChangesNothing) {
    timer_.Interval = 300;
    timer_.StartTimer();
    pump_.wait(200);
    timer_.StartTimer();
    pump_.wait(200);
    EXPECT_THAT(ticks_, ElementsAre(300));
}

TEST_F(ClsTimerTest, StopsAtOnceAlsoFromItsOwnEvent) {
    timer_.Interval = 100;
    timer_.TimerElapsed = [this] {
        ticks_.push_back(pump_.milliseconds());
        timer_.StopTimer();
    };
    timer_.StartTimer();
    pump_.wait(1000);
    EXPECT_THAT(ticks_, ElementsAre(100));
    EXPECT_FALSE(timer_.isRunning());
}

TEST_F(ClsTimerTest, NeedsAnIntervalAboveZero) {
    timer_.StartTimer();
    EXPECT_FALSE(timer_.isRunning());
    timer_.Interval = -5;
    timer_.StartTimer();
    pump_.wait(100);
    EXPECT_THAT(ticks_, IsEmpty());
}

TEST_F(ClsTimerTest, AFailingHandlerIsLoggedAndElapsesAgain) {
    int calls = 0;
    timer_.Interval = 100;
    timer_.TimerElapsed = [&] {
        ++calls;
        throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
    };
    timer_.StartTimer();
    pump_.wait(250);
    EXPECT_EQ(calls, 2);
    EXPECT_THAT(log_.lines, ElementsAre("clsTimer: Overflow", "clsTimer: Overflow"));
}

TEST_F(ClsTimerTest, OneThatHasGoneTicksNoMore) {
    int calls = 0;
    {
        clsTimer gone(pump_, log_);
        gone.Interval = 100;
        gone.TimerElapsed = [&] { ++calls; };
        gone.StartTimer();
    }
    pump_.wait(1000);
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace korvane::controls
