#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "platform/clsTimer.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClsTimerTest : public testing::Test {
protected:
    ClsTimerTest() {
        timer_.TimerElapsed = [this] { ticks_.push_back(pump_.milliseconds()); };
    }

    VirtualPump pump_;
    clsTimer timer_{pump_};
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

}  // namespace
}  // namespace korvane::platform
