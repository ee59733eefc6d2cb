#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

#include "steady/Ride.h"

namespace korvane::steady {
namespace {

double worstError(const Ride& ride, std::size_t fromRow, std::size_t toRow) {
    double worst = 0.0;
    for (std::size_t row = fromRow; row <= toRow; ++row) {
        for (std::size_t column = 3; column <= 4; ++column) {
            const std::size_t cell = row * 16 + column;
            worst = std::max(worst, std::fabs(ride.car.bytes()[cell] / TinyCar::needAt(TinyCar::centreOf(cell)) - 1.0));
        }
    }
    return worst;
}

// Of the cells amidst the way, as a share of the fuel.
double rootMeanSquare(const Ride& ride) {
    double sum = 0.0;
    int count = 0;
    for (const std::size_t cell : {67U, 68U, 69U, 83U, 84U, 85U}) {
        const double off = ride.car.bytes()[cell] / ride.car.needHere(TinyCar::centreOf(cell)) - 1.0;
        sum += off * off;
        ++count;
    }
    return std::sqrt(sum / count);
}

TEST(SteadyAgent, BringsTheMapToTheTargetWithBothFirmwares) {
    for (const bool interpolates : {true, false}) {
        Ride ride(1, interpolates);
        ride.drive(25.0);
        EXPECT_EQ(ride.agent.state(), State::Working);
        EXPECT_EQ(ride.agent.firmware(), interpolates ? Firmware::FourBytes : Firmware::OneByte);
        EXPECT_LT(worstError(ride, 4, 4), 0.02) << interpolates;
    }
}

TEST(SteadyAgent, ChangesNothingWhileItIsOff) {
    TinyCar car(1);
    SteadyAgent agent;
    for (int frame = 0; frame < 5000; ++frame) {
        ASSERT_TRUE(agent.onFrame(car.next()).empty());
    }
    EXPECT_EQ(agent.state(), State::Off);
}

TEST(SteadyAgent, ChangesNothingAfterItHasBeenSwitchedOff) {
    Ride ride(1);
    ride.drive(4.0);
    ride.agent.stop();
    const std::size_t before = ride.changes.size();
    ride.drive(4.0);
    EXPECT_EQ(ride.changes.size(), before);
}

TEST(SteadyAgent, LearnsNothingBeforeAProofOfLife) {
    Ride ride(1);
    ride.car.allowCuts(false);
    ride.drive(10.0);
    EXPECT_EQ(ride.agent.state(), State::Waiting);
    EXPECT_TRUE(ride.changes.empty());
    EXPECT_GT(ride.agent.counted(Verdict::NoProofOfLife), 1000U);
    EXPECT_EQ(ride.agent.counted(Verdict::Used), 0U);
}

TEST(SteadyAgent, HoldsWhenTheLastProofIsTooOld) {
    Ride ride(1);
    ride.drive(5.0);
    ride.car.allowCuts(false);
    ride.drive(2.0);
    EXPECT_EQ(ride.agent.state(), State::Unproved);
    const std::size_t before = ride.changes.size();
    ride.drive(2.0);
    EXPECT_EQ(ride.changes.size(), before);
    ride.car.allowCuts(true);
    ride.drive(1.0);
    EXPECT_EQ(ride.agent.state(), State::Working);
}

TEST(SteadyAgent, LearnsNothingBetweenProofsThatAreFarApart) {
    Ride ride(1);
    ride.drive(5.0);
    ride.car.allowCuts(false);
    ride.drive(2.0);
    ASSERT_EQ(ride.agent.state(), State::Unproved);
    const auto used = ride.agent.counted(Verdict::Used);
    const double weight = ride.agent.cell(4 * 16 + 4).weight;
    ride.drive(1.0);
    EXPECT_EQ(ride.agent.counted(Verdict::Used), used);
    ride.car.allowCuts(true);
    while (ride.agent.state() == State::Unproved) {
        ride.step();
    }
    EXPECT_EQ(ride.agent.cell(4 * 16 + 4).weight, weight) << "nor from the time before the proof was too old";
    ride.drive(2.0);
    EXPECT_GT(ride.agent.cell(4 * 16 + 4).weight, weight);
}

TEST(SteadyAgent, GivesTheSameMapForTheSameDrive) {
    std::vector<std::vector<CellChange>> all;
    for (unsigned seed = 7; seed < 11; ++seed) {
        Ride first(seed, seed % 2 == 0);
        Ride second(seed, seed % 2 == 0);
        first.drive(8.0);
        second.drive(8.0);
        EXPECT_EQ(first.changes, second.changes) << seed;
        EXPECT_FALSE(first.changes.empty()) << seed;
        EXPECT_TRUE(std::ranges::find(all, first.changes) == all.end()) << "another drive gives other changes";
        all.push_back(first.changes);
    }
}

TEST(SteadyAgent, BringsAnyMapOfNeedNearer) {
    for (unsigned seed = 20; seed < 26; ++seed) {
        Ride ride(seed, seed % 2 == 0, 0.0);
        ride.car.roughen(8.0);
        const double before = rootMeanSquare(ride);
        for (int frame = 0; frame < 16000; ++frame) {
            for (const CellChange& change : ride.step()) {
                ASSERT_TRUE(authorityOf(wideSetup(), ride.baseline[change.cell]).holds(change.to));
            }
        }
        // With one byte the best byte is that of the places where the engine ran, and not that of the centre.
        EXPECT_LT(rootMeanSquare(ride), (seed % 2 == 0 ? 0.5 : 1.0) * before) << seed;
    }
}

TEST(SteadyAgent, HasOneVerdictForEachFrame) {
    Ride ride(2);
    ride.drive(6.0);
    EXPECT_EQ(ride.counted(), ride.frames);
}

TEST(SteadyAgent, NeverLeavesItsAuthority) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SteadySetup setup;
        setup.richAuthority = 2.0 * seed;
        setup.leanAuthority = 7.0 - seed;
        Ride ride(seed, seed % 2 == 0, seed % 3 == 0 ? -12.0 : 12.0, setup);
        for (int frame = 0; frame < 8000; ++frame) {
            for (const CellChange& change : ride.step()) {
                ASSERT_TRUE(authorityOf(setup, ride.baseline[change.cell]).holds(change.to));
            }
        }
        EXPECT_FALSE(ride.changes.empty());
    }
}

// Cells beyond 4 per cent of the baseline on the lean side.
std::size_t beyondFour(const Ride& ride) {
    SteadySetup setup = wideSetup();
    setup.leanAuthority = 4.0;
    std::size_t count = 0;
    for (std::size_t cell = 0; cell < ride.baseline.size(); ++cell) {
        count += authorityOf(setup, ride.baseline[cell]).holds(ride.car.bytes()[cell]) ? 0U : 1U;
    }
    return count;
}

TEST(SteadyAgent, BringsCellsBackIntoASmallerAuthority) {
    Ride ride(1, true, 12.0);
    ride.drive(10.0);
    ASSERT_GT(beyondFour(ride), 5U);
    ride.agent.setAuthority(15.0, 4.0);
    // 8 per cent are three proofs of life of 3 per cent, 18 s apart or less.
    ride.drive(3.0);
    EXPECT_EQ(beyondFour(ride), 0U);
    ride.drive(3.0);
    EXPECT_EQ(beyondFour(ride), 0U);
}

// Where they stood a minute ago is beyond the smaller authority.
TEST(SteadyAgent, PutsNoCellBackBeyondASmallerAuthority) {
    for (const bool smallerFirst : {true, false}) {
        Ride ride(1, true, 12.0);
        ride.drive(10.0);
        ASSERT_GT(beyondFour(ride), 5U);
        if (smallerFirst) {
            ride.agent.setAuthority(15.0, 4.0);
        }
        ride.agent.ecuRestarted();
        if (!smallerFirst) {
            ride.step();
            ASSERT_EQ(ride.agent.state(), State::PuttingBack);
            ride.agent.setAuthority(15.0, 4.0);
        }
        ride.drive(0.1);
        EXPECT_EQ(ride.agent.state(), State::Stopped);
        EXPECT_EQ(beyondFour(ride), 0U);
    }
}

TEST(SteadyAgent, LeavesBytesBeyondASmallerAuthorityThatAreTheTuners) {
    Ride ride(1, true, 12.0);
    ride.drive(10.0);
    // One edited while it works, another that was beyond the wider authority from the start.
    constexpr std::size_t kEdited = 4 * 16 + 4;
    constexpr std::size_t kBefore = 0;
    const auto edited = static_cast<std::uint8_t>(ride.baseline[kEdited] - 10);
    ride.car.set(kEdited, edited);
    ride.agent.cellEdited(kEdited, edited);
    Ride other(1, true, 12.0);
    auto baseline = other.baseline;
    baseline[kBefore] = static_cast<std::uint8_t>(2 * baseline[kBefore]);
    other.agent.start(wideSetup(), other.car.bytes(), 0.0, baseline);
    other.drive(10.0);
    for (Ride* each : {&ride, &other}) {
        each->agent.setAuthority(15.0, 4.0);
        each->drive(3.0);
    }
    EXPECT_EQ(ride.car.bytes()[kEdited], edited);
    EXPECT_EQ(other.car.bytes()[kBefore], other.baseline[kBefore]);
}

TEST(SteadyAgent, ShowsWhatIsAtItsLimit) {
    SteadySetup setup;
    setup.leanAuthority = 3.0;
    Ride ride(1, true, 12.0, setup);
    ride.drive(10.0);
    const CellReport report = ride.agent.cell(4 * 16 + 4);
    EXPECT_TRUE(report.limited);
    EXPECT_EQ(report.held, WhyHeld::AtItsLimit);
    EXPECT_EQ(report.baseline - report.byte, std::floor(report.baseline * 0.03));
}

TEST(SteadyAgent, ChangesNoCellWithoutConfidence) {
    Ride ride(3);
    for (int frame = 0; frame < 12000; ++frame) {
        for (const CellChange& change : ride.step()) {
            if (change.isRepeat()) {
                continue;
            }
            ASSERT_GE(ride.agent.cell(change.cell).confidence, Corrector::kLeastConfidence);
        }
    }
}

TEST(SteadyAgent, LeavesCellsAloneThatWereNeverVisited) {
    Ride ride(1);
    ride.drive(10.0);
    for (const std::size_t cell : {0U, 15U, 40U, 159U}) {
        EXPECT_EQ(ride.car.bytes()[cell], ride.baseline[cell]);
        EXPECT_EQ(ride.agent.cell(cell).held, WhyHeld::NoSamples);
    }
}

TEST(SteadyAgent, CarriesToCloseNeighboursOnlyWhenAsked) {
    SteadySetup setup = wideSetup();
    setup.carry = true;
    Ride ride(1, true, 10.0, setup);
    ride.drive(15.0);
    EXPECT_TRUE(std::ranges::any_of(ride.changes, &CellChange::carried));
    Ride without(1);
    without.drive(15.0);
    EXPECT_TRUE(std::ranges::none_of(without.changes, &CellChange::carried));
}

TEST(SteadyAgent, FindsAFaultAndPutsBackWhatItChangedSince) {
    using Fault = TinyCar::Fault;
    for (const Fault fault : {Fault::Stuck, Fault::Noisy, Fault::Lean, Fault::Rich}) {
        Ride ride(5);
        ride.drive(4.0);
        const auto stood = ride.car.bytes();
        ride.car.setFault(fault);
        int frame = 0;
        while (ride.agent.state() != State::Stopped && frame < 800) {
            ride.step();
            ++frame;
        }
        EXPECT_EQ(ride.agent.state(), State::Stopped);
        EXPECT_NE(ride.agent.stopReason(), StopReason::None);
        for (std::size_t cell = 0; cell < stood.size(); ++cell) {
            const int from = ride.baseline[cell];
            EXPECT_LE(std::abs(ride.car.bytes()[cell] - from), std::abs(stood[cell] - from)) << "cell " << cell;
        }
    }
}

TEST(SteadyAgent, LearnsNothingFromASensorThatIsBrokenFromTheStart) {
    using Fault = TinyCar::Fault;
    for (const Fault fault : {Fault::Stuck, Fault::Noisy, Fault::Lean, Fault::Rich}) {
        Ride ride(5);
        ride.car.setFault(fault);
        ride.drive(10.0);
        EXPECT_TRUE(ride.changes.empty());
    }
}

TEST(SteadyAgent, PutsTheBaselineBackOnTheKey) {
    Ride ride(1);
    ride.drive(6.0);
    ASSERT_NE(ride.car.bytes(), ride.baseline);
    ride.agent.putBack();
    ride.drive(0.1);
    EXPECT_EQ(ride.car.bytes(), ride.baseline);
    EXPECT_EQ(ride.agent.state(), State::Stopped);
    EXPECT_EQ(ride.agent.stopReason(), StopReason::PutBack);
}

TEST(SteadyAgent, PutsNothingBackBeforeItsFirstStart) {
    TinyCar car(1);
    SteadyAgent agent;
    agent.putBack();
    EXPECT_TRUE(agent.onFrame(car.next()).empty());
    EXPECT_TRUE(agent.onTime(5.0).empty());
    EXPECT_EQ(agent.state(), State::Off);
}

TEST(SteadyAgent, SurvivesFramesThatCantBe) {
    Ride ride(1);
    for (int frame = 0; frame < 12000; ++frame) {
        ride.step();
        if (frame % 97 == 0) {
            Frame bad = ride.car.next();
            bad.lambda = frame % 2 == 0 ? std::nan("") : 12.5;
            bad.rpm = frame % 3 == 0 ? 65535.0 : INFINITY;
            ride.car.take(ride.agent.onFrame(bad));
        }
    }
    EXPECT_EQ(ride.agent.state(), State::Working);
    EXPECT_LT(worstError(ride, 4, 4), 0.03);
}

TEST(SteadyAgent, FollowsATargetThatTheTunerChanges) {
    Ride ride(1, true, 0.0);
    ride.drive(10.0);
    const std::size_t cell = 4 * 16 + 4;
    const int before = ride.car.bytes()[cell];
    ride.agent.setTarget(cell, 12.0F);
    ride.drive(5.0);
    EXPECT_NEAR(ride.car.bytes()[cell], before * 12.5 / 12.0, 1.0);
}

TEST(SteadyAgent, DoesNotJudgeTheSensorOfAColdEngine) {
    TinyCar car(1);
    car.setFault(TinyCar::Fault::Noisy);
    SteadyAgent agent;
    agent.start(wideSetup(), car.bytes(), 0.0);
    for (int frame = 0; frame < 3000; ++frame) {
        Frame now = car.next();
        now.waterC = 20.0;
        ASSERT_TRUE(agent.onFrame(now).empty());
    }
    EXPECT_EQ(agent.state(), State::Waiting);
}

TEST(SteadyAgent, BeginsTheHistoryAnewWhenTheClockGoesBack) {
    Ride ride(1);
    ride.drive(3.0);
    Frame early = ride.car.next();
    early.seconds -= 60.0;
    ride.agent.onFrame(early);
    EXPECT_EQ(ride.agent.lastVerdict(), Verdict::LinkLate);
}

TEST(SteadyAgent, TakesTheBaselineOfAnEarlierRun) {
    Ride ride(1);
    const auto earlier = ride.baseline;
    ride.drive(6.0);
    SteadyAgent next;
    next.start(wideSetup(), ride.car.bytes(), 0.0, earlier);
    EXPECT_TRUE(std::ranges::equal(earlier, std::span(next.baseline()).first(160)));
    EXPECT_EQ(next.map()[68], ride.car.bytes()[68]);
}

TEST(SteadyAgent, StopsForTheLineAndTheEcu) {
    const auto reasonOf = [](const auto& happen) {
        Ride ride(1);
        ride.drive(3.0);
        happen(ride.agent);
        ride.drive(0.1);
        return std::pair(ride.agent.state(), ride.agent.stopReason());
    };
    EXPECT_EQ(reasonOf([](SteadyAgent& agent) { agent.ecuRestarted(); }),
              std::pair(State::Stopped, StopReason::EcuRestarted));
    EXPECT_EQ(reasonOf([](SteadyAgent& agent) { agent.sendRefused(); }),
              std::pair(State::Stopped, StopReason::SendRefused));
    EXPECT_EQ(reasonOf([](SteadyAgent& agent) { agent.lambdaControlBegan(); }),
              std::pair(State::Stopped, StopReason::LambdaControl));
    EXPECT_EQ(reasonOf([](SteadyAgent& agent) { agent.onTime(200.0); }),
              std::pair(State::Stopped, StopReason::LinkLate));
}

TEST(SteadyAgent, TakesATunersByteForTheCellsOwn) {
    Ride ride(1);
    ride.drive(3.0);
    ride.car.set(4, 33);
    ride.agent.cellEdited(4, 33);
    EXPECT_EQ(ride.agent.map()[4], 33);
    ride.agent.ecuRestarted();
    ride.drive(0.1);
    EXPECT_EQ(ride.car.bytes()[4], 33) << "what is put back is the agent's, not the tuner's";
}

TEST(SteadyAgent, MovesNoCellByMoreThanThreePerCentBetweenTwoProofs) {
    Ride ride(4);
    for (int i = 0; i < 800; ++i) {
        ride.step();
    }
    auto before = ride.car.bytes();
    std::vector<std::uint8_t> least = before;
    std::vector<std::uint8_t> most = before;
    for (int round = 0; round < 40; ++round) {
        // Proofs are 12 s and more apart: two of these stretches never have more than two of them.
        least = most = ride.car.bytes();
        for (int frame = 0; frame < 80; ++frame) {
            ride.step();
            for (std::size_t cell = 0; cell < least.size(); ++cell) {
                least[cell] = std::min(least[cell], ride.car.bytes()[cell]);
                most[cell] = std::max(most[cell], ride.car.bytes()[cell]);
            }
        }
        for (std::size_t cell = 0; cell < least.size(); ++cell) {
            EXPECT_LE(100 * (most[cell] - least[cell]), 6 * least[cell] + 100);
        }
    }
}

}  // namespace
}  // namespace korvane::steady
