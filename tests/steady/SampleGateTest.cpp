#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include "analysis/steady/SampleGate.h"

namespace korvane::steady {
namespace {

constexpr unsigned bit(Lamp lamp) {
    return 1U << static_cast<unsigned>(lamp);
}

// At 3000 rpm and 45 per cent, warm and steady.
Frame goodFrame(double seconds) {
    return {.seconds = seconds,
            .rpm = 3000.0,
            .load = 45.0,
            .throttle = 20.0,
            .lambda = 12.5,
            .duty = 60.0,
            .waterC = 85.0,
            .cell = 4 * 16 + 4,
            .lamps = bit(Lamp::Injection) | bit(Lamp::Running)};
}

class MixtureGate : public testing::Test {
protected:
    MixtureGate() {
        for (int frame = 0; frame < 400; ++frame) {
            last_ = judge(goodFrame(seconds_));
        }
    }
    Verdict judge(Frame frame) {
        frame.seconds = seconds_;
        seconds_ += 0.075;
        return gate_.mixture(frame, setup_, Grid::placeOf(frame.rpm, frame.load));
    }
    Verdict judgeWith(const std::function<void(Frame&)>& change) {
        Frame frame = goodFrame(seconds_);
        change(frame);
        return judge(frame);
    }

    SampleGate gate_;
    SteadySetup setup_;
    double seconds_ = 0.0;
    Verdict last_ = Verdict::Count;
};

TEST_F(MixtureGate, TakesASteadyWarmEngine) {
    EXPECT_EQ(last_, Verdict::Used);
}

TEST_F(MixtureGate, HasOneReasonForEachFault) {
    const auto with = [this](Lamp lamp) { return judgeWith([lamp](Frame& frame) { frame.lamps |= bit(lamp); }); };
    EXPECT_EQ(with(Lamp::Choke), Verdict::WarmUp);
    EXPECT_EQ(with(Lamp::StartHelp), Verdict::WarmUp);
    EXPECT_EQ(with(Lamp::RpmLimiter), Verdict::RpmLimiter);
    EXPECT_EQ(with(Lamp::Launch), Verdict::RpmLimiter);
    EXPECT_EQ(with(Lamp::MotorBrake), Verdict::FuelCut);
    EXPECT_EQ(with(Lamp::AccelPump), Verdict::AccelEnrichment);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.waterC = 69.0; }), Verdict::EngineCold);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.duty = 0.0; }), Verdict::FuelCut);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.lamps = bit(Lamp::Running); }), Verdict::FuelCut);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.rpm = 950.0; }), Verdict::OutsideMap);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.load = 101.0; }), Verdict::OutsideMap);
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.cell = 9; }), Verdict::PlaceUnknown);
}

TEST_F(MixtureGate, NamesTheFirstOfSeveralReasons) {
    EXPECT_EQ(judgeWith([](Frame& frame) {
                  frame.waterC = 20.0;
                  frame.lamps |= bit(Lamp::Choke) | bit(Lamp::MotorBrake);
              }),
              Verdict::EngineCold);
}

TEST_F(MixtureGate, SeesQuickThrottleAndLoad) {
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.throttle = 30.0; }), Verdict::AccelEnrichment);
    judge(goodFrame(0.0));
    EXPECT_EQ(judgeWith([](Frame& frame) {
                  frame.load = 54.0;
                  frame.cell = 5 * 16 + 4;
              }),
              Verdict::AccelEnrichment);
}

// 128 frames a second; from one whose throttle and load are kept on, `move` has them with its number. Returns how many
// were rejected.
template <typename Move>
int rejectedOfQuickFrames(const Move& move) {
    constexpr int kMoved = 2800;  // every seventh is kept: 6 are 47 ms, 7 are 55
    constexpr int kCounted = kMoved - 100;
    SampleGate gate;
    int rejected = 0;
    for (int index = 0; index < kMoved + 300; ++index) {
        Frame frame = goodFrame(index / 128.0);
        frame.cell = 255;
        if (index > kMoved) {
            move(frame, index - kMoved);
        }
        const Verdict verdict = gate.mixture(frame, {}, Grid::placeOf(frame.rpm, frame.load));
        rejected += index >= kCounted && verdict != Verdict::Used ? 1 : 0;
    }
    return rejected;
}

TEST(MixtureGateOfQuickFrames, TakesNoCountOfASensorForAQuickChange) {
    // From frame to frame 120 per cent in a second and more, over 50 ms 24.
    EXPECT_EQ(rejectedOfQuickFrames([](Frame& frame, int at) { frame.throttle += at % 2 == 1 ? 1.2 : 0.0; }), 0);
    EXPECT_EQ(rejectedOfQuickFrames([](Frame& frame, int at) { frame.load += at % 2 == 1 ? 1.2 : 0.0; }), 0);
}

TEST(MixtureGateOfQuickFrames, SeesQuickThrottleAndLoad) {
    // 84 per cent in a second, for 56 frames. After a kept frame the rate comes to 13, 26, 39, 53, 66, 79 and 84.
    EXPECT_EQ(rejectedOfQuickFrames([](Frame& frame, int at) { frame.throttle += 84.0 / 128.0 * std::min(at, 56); }),
              16);
    // A step right after the kept frame: 120 per cent in a second, in the seventh frame 110.
    EXPECT_EQ(rejectedOfQuickFrames([](Frame& frame, int) { frame.load += 6.0; }), 7);
}

TEST_F(MixtureGate, DoesWithoutTheThrottleWhereItIsNotKnown) {
    setup_.throttleKnown = false;
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.throttle = 90.0; }), Verdict::Used);
}

TEST_F(MixtureGate, WaitsTwentySecondsAfterAStart) {
    EXPECT_EQ(judgeWith([](Frame& frame) { frame.rpm = 200.0; }), Verdict::Cranking);
    const double started = seconds_;
    while (judge(goodFrame(0.0)) == Verdict::Cranking) {
    }
    EXPECT_NEAR(seconds_ - started, 20.0, 0.2);
}

TEST_F(MixtureGate, RefusesAnEcuThatCorrectsByLambda) {
    setup_.lambdaControl = true;
    EXPECT_EQ(judge(goodFrame(0.0)), Verdict::LambdaControl);
}

TEST_F(MixtureGate, SeesALateFrame) {
    seconds_ += 0.6;
    EXPECT_EQ(judge(goodFrame(0.0)), Verdict::LinkLate);
    EXPECT_EQ(judge(goodFrame(0.0)), Verdict::Used);
}

Verdict readingOf(double lambda) {
    SampleGate gate;
    Frame frame = goodFrame(1.0);
    frame.lambda = lambda;
    return gate.reading(frame);
}

TEST(ReadingGate, TakesWhatLiesWithinTheSensorsRange) {
    EXPECT_EQ(readingOf(12.5), Verdict::Used);
    EXPECT_EQ(readingOf(10.0), Verdict::LambdaAbsent);
    EXPECT_EQ(readingOf(10.12), Verdict::LambdaRailed);
    EXPECT_EQ(readingOf(19.96), Verdict::LambdaRailed);
    EXPECT_EQ(readingOf(5.0), Verdict::LambdaOutOfRange);
    EXPECT_EQ(readingOf(std::numeric_limits<double>::quiet_NaN()), Verdict::LambdaOutOfRange);
}

// Lambda stays the same; after 8 seconds something happens. Returns when it counts as stuck, or 0.
template <typename Happen>
double stuckAt(const Happen& happen) {
    SampleGate gate;
    for (int frame = 0; frame < 600; ++frame) {
        Frame now = goodFrame(0.1 * frame);
        if (frame >= 80) {
            happen(now);
        }
        if (gate.reading(now) == Verdict::LambdaStuck) {
            return now.seconds;
        }
    }
    return 0.0;
}

TEST(ReadingGate, LetsAQuietSensorStandStillWithTheEngine) {
    EXPECT_EQ(stuckAt([](const Frame&) {}), 0.0);
    EXPECT_EQ(stuckAt([](Frame& frame) { frame.load += 4.0; }), 0.0) << "less than a cell";
}

TEST(ReadingGate, SeesAReadingThatDoesNotMoveWhenItMust) {
    EXPECT_NEAR(stuckAt([](Frame& frame) { frame.load += 10.5; }), 9.6, 0.11);
    EXPECT_NEAR(stuckAt([](Frame& frame) { frame.rpm -= 510.0; }), 9.6, 0.11);
    EXPECT_NEAR(stuckAt([](Frame& frame) { frame.duty = 0.0; }), 9.6, 0.11);
}

// With a lag of 0.1 s.
Verdict passed(Verdict last, double since, double sinceCut) {
    Smeared burnt;
    burnt.last = last;
    burnt.since = since;
    burnt.sinceCut = sinceCut;
    return SampleGate::passed(burnt, 0.1);
}

TEST(PassedGate, WaitsUntilTheExhaustIsClear) {
    // Six times the lag and 0.15 s.
    EXPECT_EQ(passed(Verdict::FuelCut, 0.0, 0.0), Verdict::FuelCut);
    EXPECT_EQ(passed(Verdict::FuelCut, 0.7, 0.7), Verdict::ExhaustClearing);
    EXPECT_EQ(passed(Verdict::FuelCut, 0.8, 0.8), Verdict::Used);
    // An enrichment behind the cut does not hide it.
    EXPECT_EQ(passed(Verdict::AccelEnrichment, 0.6, 0.7), Verdict::ExhaustClearing);
}

TEST(PassedGate, WaitsForTheDecayOfAnEnrichment) {
    EXPECT_EQ(passed(Verdict::AccelEnrichment, 0.4, 100.0), Verdict::AccelEnrichment);
    EXPECT_EQ(passed(Verdict::AccelEnrichment, 0.6, 100.0), Verdict::Used);
}

TEST(Verdicts, HaveWords) {
    for (std::size_t i = 0; i < kVerdicts; ++i) {
        EXPECT_FALSE(wordsOf(static_cast<Verdict>(i)).empty());
    }
}

}  // namespace
}  // namespace korvane::steady
