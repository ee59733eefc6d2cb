// What ten thousand restore points may cost.
#include <filesystem>
#include <gtest/gtest.h>

#include "PointSamples.h"
#include "keep/point/PointStore.h"
#include "support/ProcessorTime.h"
#include "support/TempFolder.h"

namespace korvane::keep {
namespace {

constexpr int kPoints = 10'000;
constexpr std::uintmax_t kBlock = 4096;  // of a disk

TEST(PointLimitsTest, TenThousandPointsAreListedIn100MillisecondsAndTake100Megabytes) {
    const support::TempFolder folder;
    PointStore store(folder / "restore");
    auto point = fullPoint();
    for (int i = 0; i < kPoints; ++i) {
        point.time = platform::wallTimeOf(platform::secondsOf(fullPoint().time) + i);
        ASSERT_EQ(store.add(point).failure, "");
    }
    std::vector<PointEntry> entries;
    const double seconds = support::bestSeconds(5, [&] { entries = store.list(); });
    ASSERT_EQ(entries.size(), static_cast<std::size_t>(kPoints));
    EXPECT_EQ(entries.front().time, point.time);
    EXPECT_LT(seconds, support::allowed(0.1));
    std::uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::directory_iterator(store.folder())) {
        bytes += (file.file_size() + kBlock - 1) / kBlock * kBlock;
    }
    EXPECT_LT(bytes, 100'000'000U);
}

}  // namespace
}  // namespace korvane::keep
