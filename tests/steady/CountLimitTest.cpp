#include <deque>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include "analysis/steady/CountLimit.h"

namespace korvane::steady {
namespace {

TEST(CountLimit, GivesFiveCountsAtOnceAndTheNextAfterASecond) {
    CountLimit limit;
    EXPECT_EQ(limit.left(0.0), 5);
    limit.spend(0.0, 2);
    limit.spend(0.6, 3);
    EXPECT_EQ(limit.left(1.0), 0);
    EXPECT_EQ(limit.left(1.1), 2);
    EXPECT_EQ(limit.left(1.7), 5);
}

TEST(CountLimit, GivesNoMoreInAnySecondHoweverItIsUsed) {
    std::mt19937 random(3);
    CountLimit limit;
    std::deque<std::pair<double, int>> spent;
    int total = 0;
    for (int frame = 0; frame < 5000; ++frame) {
        const double now = 0.05 * frame;
        const int counts = std::min(limit.left(now), static_cast<int>(random() % 4U));
        limit.spend(now, counts);
        total += counts;
        spent.emplace_back(now, counts);
        while (now - spent.front().first > 1.0) {
            spent.pop_front();
        }
        const int second =
            std::accumulate(spent.begin(), spent.end(), 0, [](int sum, const auto& each) { return sum + each.second; });
        ASSERT_LE(second, 5) << now;
    }
    EXPECT_GT(total, 1000) << "of 250 seconds with 5 counts";
}

}  // namespace
}  // namespace korvane::steady
