#include <cstdint>
#include <gmock/gmock.h>
#include <vector>

#include "WroteAt.h"
#include "platform/WriteRecord.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

TEST(WriteRecord, GivesBackWritesWithTheirTimesAndIsEmptyThen) {
    WriteRecord record;
    record.add(0, Bytes{1});
    record.add(127, Bytes{2, 3});
    record.add(127, Bytes{4});
    // Differences that need two and five bytes.
    record.add(127 + 128, Bytes(300, 5));
    record.add(127 + 128 + 86'400'000'000, Bytes{6});
    EXPECT_THAT(record.take(), ElementsAre(WroteAt(0, Bytes{1}), WroteAt(127, Bytes{2, 3}), WroteAt(127, Bytes{4}),
                                           WroteAt(255, Bytes(300, 5)), WroteAt(86'400'000'255, Bytes{6})));
    EXPECT_THAT(record.take(), IsEmpty());
}

TEST(WriteRecord, TimesGoOnBehindATake) {
    WriteRecord record;
    record.add(1000, Bytes{1});
    static_cast<void>(record.take());
    record.add(1010, Bytes{2});
    EXPECT_EQ(record.take().at(0).milliseconds, 1010);
}

TEST(WriteRecord, AWriteOfNothingLeavesNoTrace) {
    WriteRecord record;
    record.add(5, Bytes{});
    EXPECT_THAT(record.take(), IsEmpty());
}

// A poll of one byte, 200 ms behind the last, takes two bytes for the time, one for the count and its own: a day of
// them, 432,000, would take 1,728,000. The newest 262,144 fit.
TEST(WriteRecord, ADayOfPollsKeepsWhatFits) {
    WriteRecord record;
    for (std::int64_t i = 1; i <= 432'000; ++i) {
        record.add(200 * i, Bytes{'x'});
    }
    const auto writes = record.take();
    ASSERT_EQ(writes.size(), 262'144U);
    EXPECT_EQ(writes.front().milliseconds, 200 * (432'000 - 262'143));
    EXPECT_EQ(writes.back().milliseconds, 86'400'000);
}

}  // namespace
}  // namespace korvane::platform
