// The steady agent on a drive that is over: the engine ran on another map than the agent has by then.
#include <cmath>
#include <gtest/gtest.h>
#include <map>

#include "analysis/Rehearsal.h"
#include "steady/TinyCar.h"

namespace korvane::analysis {
namespace {

using steady::TinyCar;

constexpr int kHalfAnHour = 30 * 60 * 40 / 3;  // frames of 75 ms

steady::SteadySetup wide() {
    steady::SteadySetup setup;
    setup.richAuthority = setup.leanAuthority = 30.0;
    return setup;
}

class RehearsalTest : public testing::TestWithParam<bool> {
protected:
    explicit RehearsalTest() { car_.spoil(-8.0); }

    void drive(int frames) {
        for (int i = 0; i < frames; ++i) {
            const auto& frame = car_.next();
            ++visits_[frame.cell];
            rehearsal().add(frame);
        }
    }
    Rehearsal& rehearsal() {
        if (!rehearsal_) {
            rehearsal_.emplace(wide(), car_.bytes(), car_.bytes());
        }
        return *rehearsal_;
    }

    TinyCar car_{5, GetParam()};
    std::map<std::size_t, int> visits_;
    std::optional<Rehearsal> rehearsal_;
};

// With the recorded lambda as it is each correction would seem to have had no effect, and the cells would go on to the
// end of the authority, 30 per cent away.
TEST_P(RehearsalTest, CellsGoToTheTargetAndNoFurtherThoughTheRecordedLambdaNeverMoves) {
    drive(kHalfAnHour);
    int judged = 0;
    for (const auto& [cell, visits] : visits_) {
        if (visits > 1000) {
            const double need = TinyCar::needAt(TinyCar::centreOf(cell));
            EXPECT_NEAR(rehearsal().map()[cell], need, 0.02 * need + 1.0) << cell;
            ++judged;
        }
    }
    EXPECT_GE(judged, 8);
    EXPECT_GE(rehearsal().changedCells(), 8U);
    EXPECT_FALSE(rehearsal().hasStopped());
}

TEST_P(RehearsalTest, ASensorThatSticksStopsItAlsoWhereTheMapHasBeenChanged) {
    drive(kHalfAnHour / 3);
    ASSERT_GT(rehearsal().changedCells(), 0U);
    car_.setFault(TinyCar::Fault::Stuck);
    drive(kHalfAnHour / 30);
    EXPECT_TRUE(rehearsal().hasStopped());
    const std::vector<std::uint8_t> stopped(rehearsal().map().begin(), rehearsal().map().end());
    drive(1000);
    EXPECT_TRUE(std::ranges::equal(stopped, rehearsal().map()));
}

TEST_P(RehearsalTest, ADriveThatEndsOnTheFaultIsPutBackAndEnds) {
    drive(kHalfAnHour / 3);
    car_.setFault(TinyCar::Fault::Stuck);
    for (int frame = 0; frame < kHalfAnHour / 30 && rehearsal().agent().state() != steady::State::PuttingBack;
         ++frame) {
        drive(1);
    }
    ASSERT_EQ(rehearsal().agent().state(), steady::State::PuttingBack);
    rehearsal_->finish();
    EXPECT_TRUE(rehearsal().hasStopped());
}

INSTANTIATE_TEST_SUITE_P(OneByteAndFour, RehearsalTest, testing::Bool());

}  // namespace
}  // namespace korvane::analysis
