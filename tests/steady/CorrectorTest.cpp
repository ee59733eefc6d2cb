#include <cmath>
#include <gtest/gtest.h>

#include "analysis/steady/Corrector.h"

namespace korvane::steady {
namespace {

constexpr double kTarget = 12.5;
constexpr ByteRange kWide{0, 255};

PulseMap emptyMap() {
    PulseMap map;
    map.reset(SteadySetup{}, {});
    return map;
}

// A need of so many counts, well known.
CellNeed needOf(double counts, double error = 0.0) {
    return {.need = std::log(counts * kTarget), .weight = 100.0, .visits = 10.0, .error = error, .confidence = 0.9};
}

Correction correct(double counts, std::uint8_t byte, const ByteRange& range = kWide, double error = 0.0) {
    return Corrector::correct(emptyMap(), needOf(counts, error), byte, range, kTarget);
}

TEST(SteadyCorrector, GoesAPartOfTheWay) {
    EXPECT_EQ(correct(110.0, 100).step, 7);
    EXPECT_EQ(correct(90.0, 100).step, -7);
    EXPECT_NEAR(correct(110.0, 100).errorPercent, 10.0, 1e-9);
}

TEST(SteadyCorrector, HasADeadBandOnBothSides) {
    for (const double missing : {-0.55, -0.2, 0.0, 0.2, 0.55}) {
        EXPECT_EQ(correct(100.0 + missing, 100).held, WhyHeld::OnTarget) << missing;
    }
    EXPECT_EQ(correct(100.7, 100).step, 1);
    EXPECT_EQ(correct(99.3, 100).step, -1);
}

TEST(SteadyCorrector, NeverGoesToAndFro) {
    for (double need = 60.0; need < 62.0; need += 0.01) {
        for (int start = 40; start <= 80; ++start) {
            int byte = start;
            int last = 0;
            while (const int step = correct(need, static_cast<std::uint8_t>(byte)).step) {
                ASSERT_GE(step * last, 0) << "turned back at " << need << " from " << start;
                byte += step;
                last = step;
            }
            ASSERT_LE(std::fabs(byte - need), Corrector::kDeadBand + 0.3);
        }
    }
}

// 2 per cent too much, of which 1.8 are in doubt: a fifth of a count. On the other side no doubt counts.
TEST(SteadyCorrector, TakesFuelAwayOnlyBeyondTheDoubt) {
    const auto doubtful = [](double counts) {
        CellNeed need = needOf(counts);
        need.doubt = 0.018;
        return Corrector::correct(emptyMap(), need, 100, kWide, kTarget);
    };
    EXPECT_EQ(doubtful(98.0).held, WhyHeld::OnTarget);
    EXPECT_EQ(doubtful(96.0).step, -2);
    EXPECT_EQ(doubtful(102.0).step, 1);
}

TEST(SteadyCorrector, LeavesTheStandardError) {
    // 10 per cent less 0.8 times 5 per cent are 6 per cent, of which it goes 0.7: 4 counts.
    EXPECT_EQ(correct(110.517, 100, kWide, 0.05).step, 4);
    EXPECT_EQ(correct(103.0, 100, kWide, 0.05).held, WhyHeld::OnTarget);
}

TEST(SteadyCorrector, DoesNothingWithoutConfidenceOrSamples) {
    CellNeed need = needOf(110.0);
    need.confidence = 0.49;
    EXPECT_EQ(Corrector::correct(emptyMap(), need, 100, kWide, kTarget).held, WhyHeld::NoConfidence);
    EXPECT_EQ(Corrector::correct(emptyMap(), need, 100, kWide, kTarget).step, 0);
    EXPECT_EQ(Corrector::correct(emptyMap(), {}, 100, kWide, kTarget).held, WhyHeld::NoSamples);
}

TEST(SteadyCorrector, TakesFuelAwayOnlyAfterSeveralVisitsAndSamples) {
    const auto seen = [](double visits, double weight, double counts) {
        CellNeed need = needOf(counts);
        need.visits = visits;
        need.weight = weight;
        return Corrector::correct(emptyMap(), need, 100, kWide, kTarget);
    };
    EXPECT_EQ(seen(1.0, 100.0, 90.0).step, 0);
    EXPECT_EQ(seen(1.0, 100.0, 90.0).held, WhyHeld::FewVisits);
    EXPECT_EQ(seen(2.0, 5.9, 90.0).step, 0);
    EXPECT_EQ(seen(2.0, 6.0, 90.0).step, -7);
    EXPECT_EQ(seen(1.0, 3.0, 110.0).step, 7) << "more fuel does no harm";
}

TEST(SteadyCorrector, StopsAtTheAuthorityAndSaysSo) {
    const ByteRange range{95, 115};
    EXPECT_EQ(correct(125.0, 110, range).step, 5);
    EXPECT_TRUE(correct(125.0, 110, range).limited);
    EXPECT_EQ(correct(125.0, 115, range).held, WhyHeld::AtItsLimit);
    EXPECT_EQ(correct(125.0, 115, range).step, 0);
    EXPECT_FALSE(correct(114.0, 110, range).limited);
}

TEST(SteadyCorrector, LetsAByteBeyondTheAuthorityOnlyComeNearer) {
    const ByteRange range{95, 115};
    EXPECT_EQ(correct(140.0, 130, range).step, 0);
    EXPECT_EQ(correct(120.0, 130, range).step, -7);
    EXPECT_EQ(correct(60.0, 80, range).step, 0);
}

TEST(SteadyCorrector, CountsTheInjectionOffsetAsFuel) {
    SteadySetup setup;
    setup.offsetCounts = 20.0;
    PulseMap map;
    map.reset(setup, {});
    // 100 + 20 counts are given, 10 per cent more are needed: 12 counts.
    const CellNeed need = needOf(132.0);
    EXPECT_NEAR(Corrector::correct(map, need, 100, kWide, kTarget).errorPercent, 10.0, 1e-9);
    EXPECT_EQ(Corrector::correct(map, need, 100, kWide, kTarget).step, 8);
}

}  // namespace
}  // namespace korvane::steady
