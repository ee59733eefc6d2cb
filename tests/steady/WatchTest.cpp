#include <gtest/gtest.h>
#include <optional>

#include "analysis/steady/Watch.h"

namespace korvane::steady {
namespace {

constexpr double kTarget = 12.5;
constexpr Sight kGood{.clear = true, .target = kTarget};

// The first reason in so many seconds of frames that are all alike, and when.
struct Stop {
    StopReason reason = StopReason::None;
    double after = 0.0;
};

Stop stopOf(Watch& watch, double lambda, Verdict reading, double load = 80.0, bool clear = true, double waterC = 85.0) {
    for (int frame = 0; frame < 200; ++frame) {
        const Frame now{
            .seconds = 1000.0 + 0.075 * frame, .rpm = 4000.0, .load = load, .lambda = lambda, .waterC = waterC};
        const StopReason reason =
            watch.check(now, SteadySetup{}, {.reading = reading, .clear = clear, .target = kTarget});
        if (reason != StopReason::None) {
            return {reason, 0.075 * frame};
        }
    }
    return {};
}

Stop stopOf(double lambda, Verdict reading, double load = 80.0, bool clear = true) {
    Watch watch;
    return stopOf(watch, lambda, reading, load, clear);
}

TEST(SteadyWatch, LetsAGoodEngineRun) {
    EXPECT_EQ(stopOf(12.6, Verdict::Used).reason, StopReason::None);
}

TEST(SteadyWatch, StopsForALeanMixtureUnderLoadWithinASecond) {
    const Stop stop = stopOf(15.8, Verdict::Used);  // 1.25 times 12.5 is 15.6
    EXPECT_EQ(stop.reason, StopReason::LeanUnderLoad);
    EXPECT_LT(stop.after, 1.0);
    EXPECT_EQ(stopOf(15.5, Verdict::Used).reason, StopReason::None);
    EXPECT_EQ(stopOf(15.8, Verdict::Used, 50.0).reason, StopReason::None) << "no load";
    EXPECT_EQ(stopOf(15.8, Verdict::Used, 80.0, false).reason, StopReason::None) << "after a fuel cut";
}

// 1.10 times 12.5 is 13.75. Wet walls may be lean for up to a second.
TEST(SteadyWatch, WhereTheAgentHasTakenFuelAwayItStopsEarlier) {
    const auto stops = [](double lambda, bool leaned, double seconds, double load = 80.0) {
        Watch watch;
        for (double now = 1000.0; now < 1000.0 + seconds; now += 0.075) {
            const Frame frame{.seconds = now, .rpm = 4000.0, .load = load, .lambda = lambda, .waterC = 85.0};
            const Sight sight{.clear = true, .target = kTarget, .leaned = leaned};
            if (watch.check(frame, SteadySetup{}, sight) == StopReason::LeanUnderLoad) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(stops(13.9, true, 1.2));
    EXPECT_FALSE(stops(13.9, true, 0.9));
    EXPECT_FALSE(stops(13.9, false, 10.0));
    EXPECT_FALSE(stops(13.7, true, 10.0));
    EXPECT_FALSE(stops(13.9, true, 10.0, 50.0));
}

TEST(SteadyWatch, StopsForASensorAtAnEndOfItsRange) {
    EXPECT_EQ(stopOf(19.96, Verdict::LambdaRailed, 30.0).reason, StopReason::LambdaLean);
    EXPECT_EQ(stopOf(10.1, Verdict::LambdaRailed).reason, StopReason::LambdaRich);
    EXPECT_EQ(stopOf(10.0, Verdict::LambdaAbsent).reason, StopReason::LambdaRich);
    EXPECT_LT(stopOf(10.0, Verdict::LambdaAbsent).after, 4.0);
}

TEST(SteadyWatch, StopsForAStuckSensor) {
    EXPECT_EQ(stopOf(12.0, Verdict::LambdaStuck).reason, StopReason::LambdaStuck);
}

TEST(SteadyWatch, StopsWhenAWarmEngineReadsCold) {
    Watch watch;
    EXPECT_EQ(stopOf(watch, 12.5, Verdict::Used, 50.0, true, 20.0).reason, StopReason::None) << "not warm yet";
    stopOf(watch, 12.5, Verdict::Used);
    EXPECT_EQ(stopOf(watch, 12.5, Verdict::Used, 50.0, true, 20.0).reason, StopReason::CoolantFell);
}

TEST(SteadyWatch, StopsWhenTheLinkIsLate) {
    Watch watch;
    const auto at = [&](double seconds) { return watch.check({.seconds = seconds, .waterC = 85.0}, {}, kGood); };
    EXPECT_EQ(at(10.0), StopReason::None);
    EXPECT_EQ(at(11.9), StopReason::None);
    EXPECT_EQ(at(14.0), StopReason::LinkLate);
}

TEST(SteadyWatch, StopsForAnEcuThatCorrectsItself) {
    SteadySetup setup;
    setup.lambdaControl = true;
    Watch watch;
    EXPECT_EQ(watch.check({.seconds = 1.0, .waterC = 85.0}, setup, kGood), StopReason::LambdaControl);
}

TEST(SteadyWatch, StopsForWhatAFuelCutHasShown) {
    const auto after = [](CutTrace::Outcome cut) {
        Watch watch;
        return watch.check({.seconds = 1.0, .waterC = 85.0}, {}, {.clear = true, .target = kTarget, .cut = cut});
    };
    EXPECT_EQ(after(CutTrace::Outcome::NotLean), StopReason::LambdaSilent);
    EXPECT_EQ(after(CutTrace::Outcome::NotBack), StopReason::LambdaNotBack);
    EXPECT_EQ(after(CutTrace::Outcome::Proved), StopReason::None);
}

TEST(SteadyWatch, HasWordsForEachReason) {
    for (int i = 1; i < static_cast<int>(StopReason::Count); ++i) {
        EXPECT_FALSE(wordsOf(static_cast<StopReason>(i)).empty());
    }
}

}  // namespace
}  // namespace korvane::steady
