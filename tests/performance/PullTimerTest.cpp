#include <gtest/gtest.h>
#include <vector>

#include "performance/PullTexts.h"
#include "performance/PullTimer.h"
#include "support/ErrorOf.h"

namespace korvane::performance {
namespace {

using State = PullTimer::State;
using support::errorOf;

constexpr double kStart = 2500;
constexpr double kStop = 6500;

// A tick as the window has it. What ended with it, if anything did.
std::optional<Pull> tick(PullTimer& timer, const Reading& reading, double start = kStart, double stop = kStop) {
    static_cast<void>(timer.start(reading, start));
    auto pull = timer.stop(reading, stop);
    static_cast<void>(timer.rearm(reading.rpm, start));
    return pull;
}

struct Step {
    double rpm;
    State state;  // behind the tick
    bool ends;    // a pull ends with it
};

struct Course {
    const char* name;
    std::vector<Step> steps;
    double start = kStart;
    double stop = kStop;
};

const std::vector<Course> kCourses{
    {"a pull",
     {{900, State::Armed, false},
      {2499, State::Armed, false},
      {2500, State::Running, false},
      {6499, State::Running, false},
      {6500, State::Done, true},
      {7000, State::Done, false},
      {2501, State::Done, false},
      {2500, State::Armed, false},
      {2499, State::Armed, false},
      {3000, State::Running, false}}},
    {"the first tick is above the start", {{4000, State::Running, false}, {7000, State::Done, true}}},
    {"the first tick is above the end", {{7000, State::Done, true}, {7100, State::Done, false}}},
    {"a fall under the start does not end a pull",
     {{2600, State::Running, false}, {900, State::Running, false}, {6600, State::Done, true}}},
    {"a start that the engine never reaches", {{9000, State::Armed, false}, {0, State::Armed, false}}, 20000, 30000},
    {"an end below the start",
     {{2600, State::Done, true}, {2500, State::Armed, false}, {2500, State::Armed, true}},
     2500,
     1000},
};

TEST(PullTimer, GoesFromArmedToRunningToDoneAndBack) {
    for (const Course& course : kCourses) {
        PullTimer timer;
        EXPECT_EQ(timer.state(), State::Armed) << course.name;
        for (std::size_t i = 0; i < course.steps.size(); ++i) {
            const Step& step = course.steps[i];
            const auto pull = tick(timer, {.rpm = step.rpm}, course.start, course.stop);
            EXPECT_EQ(timer.state(), step.state) << course.name << ", step " << i;
            EXPECT_EQ(pull.has_value(), step.ends) << course.name << ", step " << i;
        }
    }
}

TEST(PullTimer, APullHasBothEndsOfIt) {
    PullTimer timer;
    EXPECT_FALSE(tick(timer, {2510, 35.2, 1'000'000}));
    EXPECT_EQ(timer.elapsed(1'250'000), 250'000);
    const auto pull = tick(timer, {6530, 91.6, 5'550'000});
    ASSERT_TRUE(pull);
    EXPECT_EQ(pull->startSpeed, 35.2F);
    EXPECT_EQ(pull->startRpm, 2510.0F);
    EXPECT_EQ(pull->endSpeed, 91.6);
    EXPECT_EQ(pull->endRpm, 6530.0);
    EXPECT_EQ(pull->seconds, 4.55);
}

// 1.001 times 1000 is 1000.9999999999999 as a double.
TEST(PullTimer, TheTimeIsCutToThreeDecimalsAndNoThousandthIsLost) {
    for (const auto& [micros, seconds] : std::vector<std::pair<platform::Micros, double>>{
             {1'001'000, 1.001}, {1'001'999, 1.001}, {999, 0.0}, {2'150'999, 2.15}, {64'000'000, 64.0}}) {
        PullTimer timer;
        static_cast<void>(tick(timer, {.rpm = 3000, .at = 7}));
        const auto pull = tick(timer, {.rpm = 7000, .at = 7 + micros});
        ASSERT_TRUE(pull);
        EXPECT_EQ(pull->seconds, seconds) << micros;
    }
}

TEST(PullTimer, AReadingThatNoSingleCanHoldDoesNotStart) {
    PullTimer timer;
    EXPECT_EQ(errorOf([&] { static_cast<void>(timer.start({3000, 1e39, 0}, kStart)); }), 6);
    EXPECT_EQ(errorOf([&] { static_cast<void>(timer.start({1e39, 100, 0}, kStart)); }), 6);
    EXPECT_EQ(timer.state(), State::Armed);
}

TEST(PullTexts, SayWhatHappened) {
    EXPECT_EQ(startedText({2510, 35.2, 0}), "Timer Started: 2510rpm  35.2 Km/h");
    const Pull pull{35.2F, 2510.0F, 91.6, 6530, 4.55};
    EXPECT_EQ(stoppedText(pull), "Stopped: 6530rpm  91.6 Km/h     4.55 s");
    EXPECT_EQ(summaryText(pull), "Speed: 35.2 - 91.6 km/h (2510 - 6530) Rpm:  Time: 4.55 s");
}

TEST(PullTexts, TheRunningTimeIsInWholeMilliseconds) {
    EXPECT_EQ(elapsedText(0), "0 ms");
    EXPECT_EQ(elapsedText(1'234'999), "1234 ms");
}

}  // namespace
}  // namespace korvane::performance
