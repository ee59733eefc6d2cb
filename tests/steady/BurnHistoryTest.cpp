#include <cmath>
#include <gtest/gtest.h>

#include "analysis/steady/BurnHistory.h"

namespace korvane::steady {
namespace {

Burn burnAt(double row, Verdict verdict = Verdict::Used) {
    return {.place = {2.5, row},
            .cell = static_cast<std::size_t>(row) * 16 + 2,
            .oneByte = row,
            .fourBytes = row,
            .rate = 100.0,
            .verdict = verdict};
}

TEST(BurnHistory, SmoothsWithTheLagOfTheSensor) {
    BurnHistory history;
    history.setLag(0.2);
    history.add(0.0, burnAt(2.0));
    for (int frame = 1; frame <= 40; ++frame) {
        history.add(0.05 * frame, burnAt(frame <= 36 ? 2.0 : 6.0));
    }
    // After a time constant from the middle of the frames between which the row changed.
    EXPECT_NEAR(history.before(0.0).place.row, 2.0 + 4.0 * (1.0 - std::exp(-0.175 / 0.2)), 0.15);
    EXPECT_NEAR(history.before(0.5).place.row, 2.0, 1e-9);
    EXPECT_EQ(history.before(0.5).cell, 2U * 16 + 2);
}

TEST(BurnHistory, CountsHowPureACellIs) {
    BurnHistory history;
    history.setLag(0.1);
    for (int frame = 0; frame <= 40; ++frame) {
        history.add(0.05 * frame, burnAt(frame <= 36 ? 2.0 : 6.0));
    }
    EXPECT_GT(history.before(0.5).purity, 0.99);
    EXPECT_NEAR(history.before(0.0).purity, 1.0 - std::exp(-0.175 / 0.1), 0.1);
}

TEST(BurnHistory, KnowsHowLongAgoTheMixtureWasOfNoUse) {
    BurnHistory history;
    for (int frame = 0; frame <= 40; ++frame) {
        history.add(0.05 * frame, burnAt(2.0, frame == 20 ? Verdict::FuelCut : Verdict::Used));
    }
    EXPECT_EQ(history.before(0.0).last, Verdict::FuelCut);
    EXPECT_NEAR(history.before(0.0).since, 0.95, 0.015) << "to the frame behind it";
    EXPECT_NEAR(history.before(0.0).sinceCut, 0.95, 0.015);
    EXPECT_EQ(history.before(1.5).last, Verdict::LinkLate) << "the begin";
}

TEST(BurnHistory, BeginsAnewAfterAGap) {
    BurnHistory history;
    for (int frame = 0; frame <= 40; ++frame) {
        history.add(0.05 * frame, burnAt(2.0));
    }
    history.add(3.0, burnAt(5.0));
    EXPECT_EQ(history.before(1.0).place.row, 5.0);
    EXPECT_EQ(history.before(0.0).last, Verdict::LinkLate);
}

TEST(BurnHistory, LetsTheGasMoveByTheDelayOfEachMoment) {
    BurnHistory history;
    for (int frame = 0; frame <= 40; ++frame) {
        history.add(0.05 * frame, burnAt(frame <= 36 ? 2.0 : 6.0));
    }
    // For the last 0.175 s the gas takes 0.35 s: half of the way. The other half it went in 0.4 s of 0.8.
    const auto delay = [](double row) { return row > 4.0 ? 0.35 : 0.8; };
    EXPECT_NEAR(history.age(delay), 0.175 + 0.4, 0.04);
}

TEST(BurnHistory, TellsHowFarTheRateIsFromTheFilms) {
    BurnHistory history;
    history.setLag(0.01);
    Burn burn = burnAt(2.0);
    for (int frame = 0; frame <= 100; ++frame) {
        burn.rate = frame <= 90 ? 100.0 : 200.0;
        history.add(0.05 * frame, burn);
    }
    // The films follow with 0.3 and 1.2 s; the step is in the middle between two frames.
    for (const auto& [index, seconds] : {std::pair{0U, 0.3}, std::pair{1U, 1.2}}) {
        const double film = 100.0 + 100.0 * (1.0 - std::exp(-0.475 / seconds));
        EXPECT_NEAR(history.before(0.0).departures[index], 1.0 - film / 200.0, 0.02);
        EXPECT_NEAR(history.before(1.0).departures[index], 0.0, 1e-6);
    }
}

}  // namespace
}  // namespace korvane::steady
