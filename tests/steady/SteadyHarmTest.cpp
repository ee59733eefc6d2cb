// What could do harm, and what the agent does instead.
#include <algorithm>
#include <cmath>
#include <deque>
#include <gtest/gtest.h>
#include <map>

#include "steady/Ride.h"

namespace korvane::steady {
namespace {

constexpr std::size_t kCell = 4 * 16 + 4;

void untilFuelled(Ride& ride) {
    while (ride.car.isCut()) {
        ride.step();
    }
    ride.drive(0.05);
}

TEST(SteadyHarm, OnePassTakesNoFuelAway) {
    Ride ride(1, true, 0.0);
    ride.drive(4.0);
    untilFuelled(ride);
    // Once under full load, where it is rich by a tenth for two seconds.
    const std::size_t cell = 8 * 16 + 4;
    const auto before = ride.car.bytes()[cell];
    ride.car.hold({4.5, 8.5});
    ride.car.setNeed(0.9);
    ride.drive(2.0 / 60.0);
    ride.car.setNeed(1.0);
    ride.car.release();
    ride.drive(10.0);
    EXPECT_GT(ride.agent.cell(cell).weight, 0.0);
    EXPECT_EQ(ride.car.bytes()[cell], before);
}

TEST(SteadyHarm, LeanUnderLoadTakesBackAllThatWasTakenAway) {
    SteadySetup setup = wideSetup();
    setup.leanFromLoad = 30.0;
    Ride ride(1, true, 10.0, setup);
    ride.drive(8.0);
    ASSERT_LT(ride.car.bytes()[kCell], ride.baseline[kCell]);
    // The fuel pump gives out: a third of the fuel is missing.
    ride.car.setNeed(1.5);
    ride.drive(2.0);
    ASSERT_EQ(ride.agent.stopReason(), StopReason::LeanUnderLoad);
    EXPECT_EQ(ride.agent.state(), State::Stopped);
    for (std::size_t cell = 0; cell < ride.baseline.size(); ++cell) {
        EXPECT_GE(ride.car.bytes()[cell], ride.baseline[cell]) << cell;
    }
}

// It needs 18 per cent more: lambda is at 14.75, above 1.10 times the target and below 1.25 times.
TEST(SteadyHarm, LeanUnderLoadIsNearerWhereTheAgentHasTakenFuelAway) {
    for (const double spoilt : {10.0, 0.0}) {
        SteadySetup setup = wideSetup();
        setup.leanFromLoad = 30.0;
        Ride ride(1, true, spoilt, setup);
        ride.drive(8.0);
        const bool leaned = ride.car.bytes()[kCell] < ride.baseline[kCell] - 1;
        ASSERT_EQ(leaned, spoilt > 0.0);
        ride.car.allowCuts(false);
        untilFuelled(ride);
        ride.car.hold({4.5, 4.5});
        ride.car.setNeed(1.18);
        ride.drive(6.0 / 60.0);
        EXPECT_EQ(ride.agent.stopReason() == StopReason::LeanUnderLoad, leaned) << spoilt;
    }
}

TEST(SteadyHarm, LeanUnderLoadKeepsWhatWasEnriched) {
    SteadySetup setup = wideSetup();
    setup.leanFromLoad = 30.0;
    Ride ride(1, true, -10.0, setup);
    ride.drive(8.0);
    const auto stood = ride.car.bytes();
    ASSERT_GT(stood[kCell], ride.baseline[kCell]);
    ride.drive(1.5);
    ride.car.setNeed(1.5);
    ride.drive(2.0);
    ASSERT_EQ(ride.agent.stopReason(), StopReason::LeanUnderLoad);
    EXPECT_GE(ride.car.bytes()[kCell], stood[kCell] - 1);
}

TEST(SteadyHarm, LeavesATunersEditAlone) {
    Ride ride(1, true, 0.0);
    ride.drive(5.0);
    const auto safe = static_cast<std::uint8_t>(ride.car.bytes()[kCell] * 6 / 5);
    ride.car.set(kCell, safe);
    ride.agent.cellEdited(kCell, safe);
    ride.drive(10.0);
    EXPECT_EQ(ride.car.bytes()[kCell], safe);
    EXPECT_EQ(ride.agent.cell(kCell).held, WhyHeld::EditedByHand);
    EXPECT_EQ(wordsOf(WhyHeld::EditedByHand), "edited by hand");
    // Until the next start.
    ride.agent.stop();
    ride.agent.start(wideSetup(), ride.car.bytes(), 1000.0);
    ride.drive(10.0);
    EXPECT_LT(ride.car.bytes()[kCell], safe);
}

TEST(SteadyHarm, AStopLeavesATunersEditAloneAndTheKeyDoesNot) {
    SteadySetup setup = wideSetup();
    setup.leanFromLoad = 30.0;
    Ride ride(1, true, 10.0, setup);
    ride.drive(5.0);
    const auto edited = static_cast<std::uint8_t>(ride.baseline[kCell] - 9);
    ride.car.set(kCell, edited);
    ride.agent.cellEdited(kCell, edited);
    ride.car.setNeed(1.5);
    ride.drive(2.0);
    ASSERT_EQ(ride.agent.stopReason(), StopReason::LeanUnderLoad);
    EXPECT_EQ(ride.car.bytes()[kCell], edited);
    ride.agent.putBack();
    ride.drive(0.1);
    EXPECT_EQ(ride.car.bytes()[kCell], ride.baseline[kCell]);
}

// The sensor tells of another need for half a minute, of so many per cent more.
std::uint64_t contradictionsOf(Ride& ride, double percent) {
    untilFuelled(ride);
    const auto before = ride.agent.counted(Verdict::Outlier);
    ride.car.setNeed(1.0 + percent / 100.0);
    ride.drive(0.5);
    ride.car.setNeed(1.0);
    return ride.agent.counted(Verdict::Outlier) - before;
}

TEST(SteadyHarm, TakesNoSampleFarFromAKnownNeed) {
    Ride ride(1, true, 0.0);
    ride.drive(10.0);
    ASSERT_GT(ride.agent.cell(kCell).confidence, 0.8);
    ride.car.hold({4.5, 4.5});
    ride.drive(0.1);
    EXPECT_EQ(contradictionsOf(ride, 3.0), 0U);
    EXPECT_GT(contradictionsOf(ride, 9.0), 200U) << "of 400 frames, less the fuel cuts";
}

TEST(SteadyHarm, LearnsAChangedNeedAnewButNotAtOnce) {
    Ride ride(1, true, 0.0);
    ride.drive(10.0);
    ride.car.setNeed(1.1);
    // From the first proof to the eighth it is 84 s at least.
    const int before = ride.car.bytes()[kCell];
    ride.drive(1.0);
    EXPECT_NEAR(ride.car.bytes()[kCell], before, 1.0);
    ride.drive(12.0);
    EXPECT_NEAR(ride.car.bytes()[kCell], 1.1 * TinyCar::needAt(TinyCar::centreOf(kCell)), 2.0);
}

TEST(SteadyHarm, LearnsNothingFromAnEnrichmentWithoutALamp) {
    for (const bool interpolates : {true, false}) {
        Ride ride(1, interpolates, 0.0);
        ride.car.setEnrichment(0.2);
        ride.drive(20.0);
        EXPECT_GT(ride.agent.counted(Verdict::PulseOff), 500U);
        EXPECT_GT(ride.agent.counted(Verdict::Used), 3000U);
        // With one byte a cell's own need is that of the places where the engine ran, a count or two from its centre.
        const int most = interpolates ? 1 : 3;
        for (std::size_t cell = 0; cell < ride.baseline.size(); ++cell) {
            EXPECT_GE(ride.car.bytes()[cell], ride.baseline[cell] - most) << cell;
        }
    }
}

// 4.5 per cent are within what the pulse may be off by, but not behind an opened throttle.
TEST(SteadyHarm, BehindAnOpenedThrottleItSeesASmallEnrichment) {
    for (const bool lit : {false, true}) {
        Ride ride(1, true, 0.0);
        ride.car.setEnrichment(0.045);
        if (lit) {
            ride.car.lightEnrichment();
        }
        ride.drive(20.0);
        // One opening in 15 s or so, and a second each time: 13 frames of 200.
        EXPECT_EQ(ride.agent.counted(Verdict::PulseOff) > 300U, lit) << ride.agent.counted(Verdict::PulseOff);
    }
}

TEST(SteadyHarm, SendsEachChangeOnceMore) {
    Ride ride(1);
    std::map<std::size_t, double> open;  // changed cells and when
    std::map<std::size_t, int> repeats;
    for (int frame = 0; frame < 12000; ++frame) {
        const double now = 0.075 * frame;
        for (const CellChange& change : ride.step()) {
            if (change.isRepeat()) {
                EXPECT_TRUE(open.contains(change.cell)) << "sent more than twice";
                EXPECT_EQ(change.to, ride.agent.map()[change.cell]);
                open.erase(change.cell);
            } else {
                open[change.cell] = now;
            }
        }
        for (const auto& [cell, since] : open) {
            ASSERT_LT(now - since, 30.0) << cell;
        }
    }
}

TEST(SteadyHarm, LostFramesLeaveTheEngineWithTheAgentsMap) {
    Ride ride(1, true, 8.0);
    std::mt19937 random(3);
    ride.loses = [&random] { return random() % 10 < 3; };
    ride.drive(30.0);
    int apart = 0;
    for (std::size_t cell = 0; cell < ride.baseline.size(); ++cell) {
        apart += ride.car.bytes()[cell] != ride.agent.map()[cell] ? 1 : 0;
    }
    // Of 30 changed cells one in ten loses both sends of its last change.
    EXPECT_LE(apart, 8);
    EXPECT_LT(std::fabs(ride.car.bytes()[kCell] / TinyCar::needAt(TinyCar::centreOf(kCell)) - 1.0), 0.02);
}

TEST(SteadyHarm, PutsBackTwice) {
    Ride ride(1);
    ride.drive(6.0);
    ride.agent.putBack();
    bool first = true;
    ride.loses = [&first] { return std::exchange(first, false); };
    ride.drive(0.1);
    EXPECT_EQ(ride.agent.state(), State::Stopped);
    EXPECT_EQ(ride.car.bytes(), ride.baseline);
}

TEST(SteadyHarm, MovesNoMoreThanFiveCountsInAnySecond) {
    Ride ride(1, true, 13.0);
    std::deque<std::pair<double, int>> spent;
    int total = 0;
    for (int frame = 0; frame < 12000; ++frame) {
        const double now = 0.075 * frame;
        for (const CellChange& change : ride.step()) {
            spent.emplace_back(now, std::max(std::abs(change.to - change.from), 1));
        }
        while (!spent.empty() && now - spent.front().first > 1.0) {
            spent.pop_front();
        }
        int sum = 0;
        for (const auto& [seconds, counts] : spent) {
            sum += counts;
        }
        ASSERT_LE(sum, 5) << now;
        total = std::max(total, sum);
    }
    EXPECT_EQ(total, 5) << "and it uses them";
}

TEST(SteadyHarm, AQuietSensorAtAConstantLoadIsNotStuck) {
    Ride ride(1, true, 0.0);
    ride.car.allowCuts(false);
    ride.car.hold({4.5, 5.5});
    ride.car.setFault(TinyCar::Fault::Quiet);
    ride.drive(5.0);
    EXPECT_EQ(ride.agent.stopReason(), StopReason::None);
    EXPECT_EQ(ride.agent.counted(Verdict::LambdaStuck), 0U);
}

TEST(SteadyHarm, TheEcusOwnLambdaControlPutsBackWhatCameSinceTheLastProof) {
    Ride ride(5);
    ride.drive(4.0);
    const auto stood = ride.car.bytes();
    ride.agent.lambdaControlBegan();
    ride.drive(0.1);
    EXPECT_EQ(ride.agent.state(), State::Stopped);
    EXPECT_EQ(ride.agent.stopReason(), StopReason::LambdaControl);
    EXPECT_NE(ride.car.bytes(), stood);
    for (std::size_t cell = 0; cell < stood.size(); ++cell) {
        const int from = ride.baseline[cell];
        EXPECT_LE(std::abs(ride.car.bytes()[cell] - from), std::abs(stood[cell] - from)) << cell;
    }
}

TEST(SteadyHarm, APauseOfItsClockMakesTheProofOld) {
    Ride ride(1);
    ride.drive(4.0);
    untilFuelled(ride);
    ASSERT_EQ(ride.agent.state(), State::Working);
    ride.agent.rested(30.0);
    ride.step();
    EXPECT_EQ(ride.agent.state(), State::Working);
    ride.agent.rested(80.0);
    ride.step();
    EXPECT_EQ(ride.agent.state(), State::Unproved);
}

TEST(SteadyHarm, FindsTheDelayAgainWhenItHasChanged) {
    Ride ride(1, true, 0.0);
    ride.drive(10.0);
    ASSERT_TRUE(ride.agent.zone(1).delayMs.has_value());
    ride.car.setDelay(0.8);
    ride.drive(25.0);
    ASSERT_TRUE(ride.agent.zone(1).delayMs.has_value());
    EXPECT_NEAR(*ride.agent.zone(1).delayMs, 900.0, 80.0);
}

}  // namespace
}  // namespace korvane::steady
