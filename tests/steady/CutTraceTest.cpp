#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "analysis/steady/CutTrace.h"

namespace korvane::steady {
namespace {

using Outcome = CutTrace::Outcome;

// A sensor with delay and lag behind an engine at 12.5, with a fuel cut from second 5 on.
struct Sensor {
    double delay = 0.25;
    double lag = 0.1;
    double length = 2.0;  // of the cut

    [[nodiscard]] double at(double seconds) const {
        const auto follow = [this](double since) { return since <= 0.0 ? 0.0 : 1.0 - std::exp(-since / lag); };
        const double up = follow(seconds - 5.0 - delay);
        const double top = follow(length);
        const double down = follow(seconds - 5.0 - length - delay);
        const double share = seconds < 5.0 + length + delay ? up : top * (1.0 - down);
        return 12.5 + 7.5 * share;
    }
    [[nodiscard]] bool cut(double seconds) const { return seconds >= 5.0 && seconds < 5.0 + length; }
};

struct Seen {
    std::vector<Outcome> outcomes;
    std::vector<Answer> answers;
};

Seen watch(CutTrace& trace, const Sensor& sensor, double offset = 0.0,
           const std::function<double(double)>& spoil = {}) {
    Seen seen;
    for (double seconds = 0.02; seconds < 15.0; seconds += 0.075) {
        const double lambda = spoil ? spoil(seconds) : sensor.at(seconds);
        const Outcome outcome = trace.add(offset + seconds, lambda, sensor.cut(seconds));
        if (outcome != Outcome::None) {
            seen.outcomes.push_back(outcome);
        }
        while (const auto answer = trace.takeAnswer()) {
            seen.answers.push_back(*answer);
        }
    }
    return seen;
}

TEST(CutTrace, ProvesASensorThatGoesLeanAndComesBack) {
    CutTrace trace;
    EXPECT_EQ(watch(trace, {}).outcomes, std::vector{Outcome::Proved});
}

TEST(CutTrace, MeasuresDelayAndLagTwice) {
    CutTrace trace;
    const Seen seen = watch(trace, {});
    ASSERT_EQ(seen.answers.size(), 2U);
    for (const Answer& answer : seen.answers) {
        // Half a frame of doubt about when the fuel changed.
        EXPECT_NEAR(answer.delay, 0.35, 0.045);
        EXPECT_NEAR(answer.lag, 0.1, 0.05);
    }
    EXPECT_NEAR(seen.answers[0].changedAt, 5.0, 0.04);
    EXPECT_NEAR(seen.answers[1].changedAt, 7.0, 0.04);
}

TEST(CutTrace, FindsASensorThatDoesNotMove) {
    CutTrace trace;
    const Seen seen = watch(trace, {}, 0.0, [](double) { return 12.5; });
    EXPECT_EQ(seen.outcomes, std::vector{Outcome::NotLean});
    EXPECT_TRUE(seen.answers.empty());
}

TEST(CutTrace, FindsASensorThatIsStuckAtItsLeanEnd) {
    CutTrace trace;
    EXPECT_EQ(watch(trace, {}, 0.0, [](double) { return 19.96; }).outcomes, std::vector{Outcome::NotLean});
}

TEST(CutTrace, FindsASlowSensor) {
    CutTrace trace;
    EXPECT_EQ(watch(trace, {.lag = 3.0}).outcomes, std::vector{Outcome::NotLean});
}

TEST(CutTrace, FindsASensorThatStaysLean) {
    CutTrace trace;
    const Sensor sensor;
    const Seen seen =
        watch(trace, sensor, 0.0, [&](double seconds) { return seconds < 7.0 ? sensor.at(seconds) : 19.96; });
    EXPECT_EQ(seen.outcomes, std::vector{Outcome::NotBack});
}

TEST(CutTrace, IsProvedByAShortCutToo) {
    CutTrace trace;
    EXPECT_EQ(watch(trace, {.length = 0.4}).outcomes, std::vector{Outcome::Proved});
}

TEST(CutTrace, NeedsTwoShortCutsAgainstASensorWhoseLagItKnows) {
    CutTrace trace;
    trace.expectLag(0.1);
    const Sensor slow{.lag = 3.0, .length = 0.5};
    EXPECT_TRUE(watch(trace, slow).outcomes.empty());
    EXPECT_EQ(watch(trace, slow, 20.0).outcomes, std::vector{Outcome::NotLean});
}

TEST(CutTrace, ForgivesShortCutsWhileTheLagIsNotKnown) {
    CutTrace trace;
    const Sensor slow{.lag = 3.0, .length = 0.5};
    for (int round = 0; round < 4; ++round) {
        EXPECT_TRUE(watch(trace, slow, 20.0 * round).outcomes.empty());
    }
}

TEST(CutTrace, SaysNothingOfACutThatHadBegunBefore) {
    CutTrace trace;
    for (double seconds = 0.0; seconds < 3.0; seconds += 0.075) {
        EXPECT_EQ(trace.add(seconds, 12.5, true), Outcome::None);
    }
}

}  // namespace
}  // namespace korvane::steady
