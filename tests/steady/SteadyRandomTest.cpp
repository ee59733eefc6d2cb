// Random drives with everything that may happen on the way: edits, undo, a restored map, other targets, fixed delays,
// other limits, stops and starts, faults of sensor, ECU and line, lamps.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "steady/Ride.h"

namespace korvane::steady {
namespace {

class RandomRide {
public:
    explicit RandomRide(unsigned seed) : random_(seed), car_(seed, seed % 2 == 0), carry_(seed % 3 == 0) {
        car_.spoil(seed % 4 < 2 ? 12.0 : -12.0);
        car_.roughen(seed % 5);
        baseline_ = car_.bytes();
        chooseLimits();
        start();
    }

    void drive(int frames) {
        for (int i = 0; i < frames && !testing::Test::HasFatalFailure(); ++i) {
            frame();
            happen();
            if (!runs() && below(300) == 0) {
                start();
            }
        }
    }
    [[nodiscard]] const std::vector<CellChange>& changes() const { return changes_; }
    [[nodiscard]] const std::vector<std::uint8_t>& map() const { return car_.bytes(); }
    [[nodiscard]] int putBacks() const { return putBacks_; }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    void chooseLimits() {
        rich_ = below(20);
        lean_ = below(16);
    }
    [[nodiscard]] ByteRange rangeOf(std::size_t cell) const {
        SteadySetup setup;
        setup.richAuthority = rich_;
        setup.leanAuthority = lean_;
        return authorityOf(setup, baseline_[cell]);
    }
    [[nodiscard]] bool allInside() const {
        for (std::size_t cell = 0; cell < baseline_.size(); ++cell) {
            if (!rangeOf(cell).holds(car_.bytes()[cell])) {
                return false;
            }
        }
        return true;
    }
    // As the program does: not with a map that is beyond the limits, but for the put back.
    void start() {
        SteadySetup setup;
        setup.richAuthority = rich_;
        setup.leanAuthority = lean_;
        setup.carry = carry_;
        const bool inside = allInside();
        agent_.start(setup, car_.bytes(), seconds_, baseline_);
        if (!inside) {
            agent_.putBack();
        }
    }
    [[nodiscard]] bool runs() const { return agent_.state() != State::Off && agent_.state() != State::Stopped; }
    [[nodiscard]] std::uint64_t counted() const {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < kVerdicts; ++i) {
            sum += agent_.counted(static_cast<Verdict>(i));
        }
        return sum;
    }

    void frame() {
        Frame frame = car_.next();
        frame.seconds += rested_;
        frame.lamps |= lamps_;
        seconds_ = frame.seconds;
        const bool running = runs();
        const auto before = counted();
        const auto changes = agent_.onFrame(frame);
        ASSERT_EQ(counted() - before, running ? 1U : 0U) << "reasons of a frame";
        ASSERT_TRUE(running || changes.empty()) << "sent while it is off";
        for (const CellChange& change : changes) {
            check(change);
        }
        car_.take(changes);
        changes_.insert(changes_.end(), changes.begin(), changes.end());
    }
    void check(const CellChange& change) {
        if (change.isRepeat()) {
            return;
        }
        putBacks_ += change.putBack ? 1 : 0;
        const ByteRange range = rangeOf(change.cell);
        const auto beyond = [&](int byte) { return std::abs(byte - std::clamp(byte, range.least, range.most)); };
        ASSERT_TRUE(range.holds(change.to) || beyond(change.to) < beyond(change.from))
            << change.cell << ": " << int{change.from} << " to " << int{change.to} << " in " << range.least << " to "
            << range.most << (change.putBack ? ", put back" : "");
        if (!change.putBack && range.holds(change.from)) {
            ASSERT_GE(agent_.cell(change.cell).confidence, Corrector::kLeastConfidence);
            ASSERT_TRUE(carry_ || !change.carried);
        }
    }

    void edit(std::size_t cell, int byte) {
        undo_ = {cell, car_.bytes()[cell]};
        const auto bounded = static_cast<std::uint8_t>(std::clamp(byte, 1, 255));
        car_.set(cell, bounded);
        agent_.cellEdited(cell, bounded);
    }
    void happen() {
        const std::size_t cell = 3U * 16U + below(64);
        switch (below(1500)) {
            case 0:
                return edit(cell, car_.bytes()[cell] + static_cast<int>(below(31)) - 15);
            case 1:
                return edit(undo_.first, undo_.second);
            case 2:
                return agent_.setTarget(cell, 12.0F + 0.1F * static_cast<float>(below(12)));
            case 3:
                return agent_.fixDelay(below(4), below(500));
            case 4:
                chooseLimits();
                return agent_.setAuthority(rich_, lean_);
            case 5:
                return car_.setFault(static_cast<TinyCar::Fault>(below(6)));
            case 6:
            case 7:
            case 8:
                return car_.setFault(TinyCar::Fault::None);
            default:
                happenSeldom();
        }
    }
    void happenSeldom() {
        switch (below(6000)) {
            case 0:
                return agent_.stop();
            case 1:
                return agent_.ecuRestarted();
            case 2:
                return agent_.sendRefused();
            case 3:
                return agent_.lambdaControlBegan();
            case 4:
                return agent_.putBack();
            case 5:
                for (std::size_t cell = 0; cell < baseline_.size(); ++cell) {
                    edit(cell, baseline_[cell]);
                }
                return;
            case 6:
                rested_ += below(4);  // a gap in the line
                return;
            default:
                lamps_ = below(400) == 0 ? 1U << below(14) : below(40) == 0 ? 0U : lamps_;
        }
    }

    std::mt19937 random_;
    TinyCar car_;
    bool carry_;
    SteadyAgent agent_;
    std::vector<std::uint8_t> baseline_;
    std::vector<CellChange> changes_;
    std::pair<std::size_t, std::uint8_t> undo_{50, 80};
    double rich_ = 0.0;
    double lean_ = 0.0;
    double seconds_ = 0.0;
    double rested_ = 0.0;
    unsigned lamps_ = 0;
    int putBacks_ = 0;
};

TEST(SteadyRandom, WhateverHappensItKeepsItsPromises) {
    int putBacks = 0;
    std::size_t changes = 0;
    std::size_t carried = 0;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        RandomRide ride(seed);
        ride.drive(12000);
        if (HasFatalFailure()) {
            return;
        }
        putBacks += ride.putBacks();
        changes += ride.changes().size();
        carried += static_cast<std::size_t>(
            std::ranges::count_if(ride.changes(), [](const CellChange& change) { return change.carried; }));
    }
    EXPECT_GT(putBacks, 100);
    EXPECT_GT(changes, 1000U);
    EXPECT_GT(carried, 10U);
}

TEST(SteadyRandom, TheSameDriveGivesTheSameMap) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        RandomRide ride(seed);
        RandomRide same(seed);
        ride.drive(8000);
        same.drive(8000);
        EXPECT_EQ(ride.changes(), same.changes());
        EXPECT_EQ(ride.map(), same.map());
        EXPECT_FALSE(ride.changes().empty());
    }
}

}  // namespace
}  // namespace korvane::steady
