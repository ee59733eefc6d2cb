#include <bit>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ecu/server/LineQueue.h"

namespace korvane::ecu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

Bytes taken(LineQueue& queue, Micros at) {
    Bytes bytes;
    queue.take(at, bytes);
    return bytes;
}

// How many of `count` zero bytes arrive, and how they look.
Bytes through(const LineFaults& faults, int count) {
    LineQueue queue(1);
    queue.setFaults(faults);
    Bytes all;
    Micros at = 0;
    for (int i = 0; i < count / 100; ++i) {
        queue.send(Bytes(100, 0), at);
        at += 1'000'000;
        queue.take(at, all);
    }
    return all;
}

TEST(LineQueue, AByteTakesTenBitTimes) {
    LineQueue queue(1);
    queue.setBaud(10000);
    queue.send(Bytes{1, 2, 3}, 500);
    EXPECT_EQ(queue.nextDue(), 1500);
    EXPECT_THAT(taken(queue, 1499), IsEmpty());
    EXPECT_THAT(taken(queue, 1500), ElementsAre(1));
    EXPECT_EQ(queue.nextDue(), 2500);
    EXPECT_THAT(taken(queue, 3500), ElementsAre(2, 3));
    EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST(LineQueue, AFractionOfAMicrosecondDoesNotAddUp) {
    LineQueue queue(1);
    queue.setBaud(57600);
    queue.send(Bytes(576, 0), 0);
    // 576 bytes of 10 bits at 57600 baud are 100 ms.
    EXPECT_EQ(taken(queue, 99'998).size(), 575U);
    EXPECT_EQ(taken(queue, 100'000).size(), 1U);
}

TEST(LineQueue, WaitsForWhatIsBeforeAndForItsTime) {
    LineQueue queue(1);
    queue.setBaud(10000);
    queue.send(Bytes{1, 2}, 0);
    queue.send(Bytes{3}, 500);
    queue.send(Bytes{4}, 9000);
    EXPECT_THAT(taken(queue, 3000), ElementsAre(1, 2, 3));
    EXPECT_EQ(queue.nextDue(), 10'000);
}

TEST(LineQueue, ANewSpeedIsForWhatIsSentFromThenOn) {
    LineQueue queue(1);
    queue.setBaud(10000);
    queue.send(Bytes{1}, 0);
    queue.setBaud(100'000);
    queue.send(Bytes{2}, 0);
    EXPECT_EQ(taken(queue, 1000).size(), 1U);
    EXPECT_EQ(queue.nextDue(), 1100);
}

TEST(LineQueue, KnowsItsBacklog) {
    LineQueue queue(1);
    queue.setBaud(10000);
    EXPECT_EQ(queue.backlog(0), 0);
    queue.send(Bytes{1, 2}, 0);
    EXPECT_EQ(queue.backlog(500), 1500);
    EXPECT_EQ(queue.backlog(5000), 0);
    EXPECT_EQ(queue.duration(22), 22'000);
}

TEST(LineQueue, HoldsNoMoreThanItsCapacity) {
    LineQueue queue(1);
    for (int i = 0; i < 1000; ++i) {
        queue.send(Bytes(200, 7), 0);
    }
    const std::size_t held = taken(queue, 1'000'000'000).size();
    EXPECT_LE(held, LineQueue::kCapacity);
    EXPECT_GT(held, LineQueue::kCapacity - 400);
    EXPECT_EQ(held % 200, 0U) << "a frame goes whole or not at all";
}

TEST(LineQueue, ACutLeavesOnlyTheByteOnTheLine) {
    LineQueue queue(1);
    queue.setBaud(10000);
    queue.send(Bytes{1, 2, 3}, 0);
    queue.cut(1500);
    EXPECT_EQ(queue.backlog(1500), 500);
    EXPECT_THAT(taken(queue, 10'000), ElementsAre(1, 2));
}

TEST(LineQueue, LosesAsManyAsTheChanceSays) {
    EXPECT_NEAR(static_cast<double>(through({.lose = 0.3}, 10000).size()), 7000.0, 200.0);
    EXPECT_TRUE(through({.lose = 1.0}, 1000).empty());
}

TEST(LineQueue, ALostByteStillTakesItsTime) {
    LineQueue queue(1);
    queue.setBaud(10000);
    queue.setFaults({.lose = 1.0});
    queue.send(Bytes{1}, 0);
    queue.setFaults({});
    queue.send(Bytes{2}, 0);
    EXPECT_EQ(queue.nextDue(), 2000);
}

TEST(LineQueue, FlipsOneBitAsOftenAsTheChanceSays) {
    int flipped = 0;
    unsigned seen = 0;
    for (const std::uint8_t byte : through({.flip = 0.1}, 10000)) {
        EXPECT_TRUE(byte == 0 || std::has_single_bit(byte));
        flipped += byte != 0 ? 1 : 0;
        seen |= byte;
    }
    EXPECT_NEAR(flipped, 1000, 120);
    EXPECT_EQ(seen, 0xFFU) << "every bit gets its turn";
}

TEST(LineQueue, AddsAsManyAsTheChanceSays) {
    EXPECT_NEAR(static_cast<double>(through({.add = 0.2}, 10000).size()), 12000.0, 160.0);
}

TEST(LineQueue, AStrayByteComesBeforeTheOther) {
    LineQueue queue(1);
    queue.setFaults({.add = 1.0});
    queue.send(Bytes{0x42}, 0);
    const Bytes bytes = taken(queue, 1'000'000);
    ASSERT_EQ(bytes.size(), 2U);
    EXPECT_EQ(bytes[1], 0x42);
}

TEST(LineQueue, TheSameSeedDamagesTheSameBytes) {
    EXPECT_EQ(through({.lose = 0.1, .flip = 0.1, .add = 0.1}, 5000),
              through({.lose = 0.1, .flip = 0.1, .add = 0.1}, 5000));
}

}  // namespace
}  // namespace korvane::ecu
