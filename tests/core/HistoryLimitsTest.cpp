// What a step of the history may cost.
#include <gtest/gtest.h>
#include <malloc.h>
#include <memory>

#include "core/history/MapHistory.h"
#include "support/MachineBench.h"
#include "support/ProcessorTime.h"

namespace korvane::core {
namespace {

constexpr int kSteps = 10'000;

struct HistoryLimitsTest : support::MachineBench {
    // Another byte in each cell of the map, as a read or a scaling brings it.
    void step() {
        tables.FuelMapOut.fill(++byte);
        history->noted({Cause::Kind::Scaling});
    }
    static std::size_t bytesInUse() {
        const auto heap = mallinfo2();
        return heap.uordblks + heap.hblkhd;
    }

    MapImages tables;
    std::unique_ptr<MapHistory> history = std::make_unique<MapHistory>(tables, pump_);
    std::uint8_t byte = 0;
};

TEST_F(HistoryLimitsTest, AStepOfAWholeMapTakesUnder50Microseconds) {
    constexpr int kRuns = 5;
    constexpr int kStepsOfARun = kSteps / kRuns;
    const double seconds = support::bestSeconds(kRuns, [this] {
        for (int i = 0; i < kStepsOfARun; ++i) {
            step();
        }
    });
    EXPECT_EQ(history->count(), static_cast<std::size_t>(kSteps));
    EXPECT_LT(seconds / kStepsOfARun, support::allowed(50e-6));
}

TEST_F(HistoryLimitsTest, TenThousandStepsOfAWholeMapTakeUnder50Megabytes) {
    if (support::kSanitized) {
        GTEST_SKIP() << "the sanitizers have a heap of their own";
    }
    step();
    const auto before = bytesInUse();
    for (int i = 1; i < kSteps; ++i) {
        step();
    }
    EXPECT_EQ(history->count(), static_cast<std::size_t>(kSteps));
    EXPECT_LT(bytesInUse() - before, 50'000'000U);
}

}  // namespace
}  // namespace korvane::core
