#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "ecu/memory/Eeprom.h"

namespace korvane::ecu {
namespace {

using testing::ElementsAre;

constexpr Micros kStart = 1000;
constexpr std::uint8_t kOld = 0x81;
constexpr std::uint8_t kNew = 0x42;

Eeprom cellsOf(std::size_t count) {
    return Eeprom(std::vector<std::uint8_t>(count, kOld));
}

// As many writes of the new value as there are cells, all ordered at kStart; then the power fails.
Eeprom cutAt(Micros at, std::size_t count, std::uint64_t seed = 1) {
    Eeprom eeprom = cellsOf(count);
    for (std::size_t i = 0; i < count; ++i) {
        eeprom.write(static_cast<int>(i), kNew, kStart);
    }
    Noise noise(seed);
    eeprom.powerFails(at, noise);
    return eeprom;
}

TEST(Eeprom, IsReadAsItWasOrdered) {
    Eeprom eeprom = cellsOf(3);
    EXPECT_TRUE(eeprom.write(2, kNew, kStart));
    EXPECT_THAT(eeprom.cells(), ElementsAre(kOld, kOld, kNew));
    EXPECT_EQ(eeprom.read(2), kNew);
}

TEST(Eeprom, HasNothingBesideItsCells) {
    Eeprom eeprom = cellsOf(3);
    EXPECT_FALSE(eeprom.write(3, kNew, 0));
    EXPECT_FALSE(eeprom.write(-1, kNew, 0));
    EXPECT_EQ(eeprom.read(3), 255);
    EXPECT_EQ(eeprom.read(-1), 255);
    EXPECT_THAT(eeprom.writes(), ElementsAre(0, 0, 0));
}

TEST(Eeprom, IsHalfWrittenOnlyInTheCellThatIsUnderWay) {
    const Eeprom eeprom = cutAt(kStart + 3400 + 2000, 4);
    EXPECT_EQ(eeprom.read(0), kNew);
    EXPECT_EQ(eeprom.read(1) & kNew, kNew) << "programming clears no bit of the new value";
    EXPECT_EQ(eeprom.read(2), kOld);
    EXPECT_EQ(eeprom.read(3), kOld);
}

TEST(Eeprom, ACellThatIsErasedHasTheBitsOfItsOldValueAndAnyOthers) {
    std::uint8_t ones = 0;
    std::uint8_t common = 255;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const std::uint8_t cell = cutAt(kStart + 1699, 1, seed).read(0);
        ones |= cell;
        common &= cell;
    }
    EXPECT_EQ(ones, 255);
    EXPECT_EQ(common, kOld);
}

TEST(Eeprom, ACellThatIsProgrammedHasTheBitsOfItsNewValueAndAnyOthers) {
    std::uint8_t ones = 0;
    std::uint8_t common = 255;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const std::uint8_t cell = cutAt(kStart + 1700, 1, seed).read(0);
        ones |= cell;
        common &= cell;
    }
    EXPECT_EQ(ones, 255);
    EXPECT_EQ(common, kNew);
}

TEST(Eeprom, NeedsAsLongAsItHasWrites) {
    EXPECT_EQ(cutAt(kStart + 4 * 3400, 4).read(3), kNew);
    EXPECT_EQ(cutAt(kStart + 3 * 3400, 4).read(3), kOld);
}

TEST(Eeprom, AWriteWaitsForTheOneBefore) {
    Eeprom eeprom = cellsOf(2);
    eeprom.write(0, kNew, kStart);
    eeprom.write(1, kNew, kStart + 1000);
    Noise noise(1);
    eeprom.powerFails(kStart + 3400, noise);
    EXPECT_THAT(eeprom.cells(), ElementsAre(kNew, kOld));
}

TEST(Eeprom, ThePowerLastsIntoWhatIsOrderedAtItsEnd) {
    std::set<std::size_t> done;
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        const Eeprom eeprom = cutAt(kStart, 100, seed);
        const auto cells = eeprom.cells();
        const auto end = std::ranges::find_if(cells, [](std::uint8_t cell) { return cell != kNew; });
        done.insert(static_cast<std::size_t>(end - cells.begin()));
        EXPECT_EQ(std::count(end + 1, cells.end(), kOld), cells.end() - end - 1) << seed;
    }
    EXPECT_LT(*done.begin(), 10U);
    EXPECT_GT(*done.rbegin(), 90U);
    EXPECT_FALSE(done.contains(100)) << "the power never lasts to the end";
}

TEST(Eeprom, ASingleWriteIsHitToo) {
    int neither = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const std::uint8_t cell = cutAt(kStart, 1, seed).read(0);
        EXPECT_TRUE((cell & kNew) == kNew || (cell & kOld) == kOld) << int{cell};
        neither += cell != kNew && cell != kOld ? 1 : 0;
    }
    EXPECT_GT(neither, 80);
}

TEST(Eeprom, APowerFailureWithoutAWriteChangesNothing) {
    Eeprom eeprom = cellsOf(2);
    Noise noise(1);
    eeprom.powerFails(kStart, noise);
    EXPECT_THAT(eeprom.cells(), ElementsAre(kOld, kOld));
    eeprom.write(1, kNew, kStart);
    eeprom.powerFails(kStart + 3400, noise);
    EXPECT_THAT(eeprom.cells(), ElementsAre(kOld, kNew));
}

TEST(Eeprom, TheSecondWriteOfACellIsTakenBackAlone) {
    Eeprom eeprom = cellsOf(2);
    eeprom.write(0, 7, kStart);
    eeprom.write(1, 8, kStart);
    eeprom.write(0, 9, kStart);
    Noise noise(1);
    eeprom.powerFails(kStart + 2 * 3400, noise);
    EXPECT_THAT(eeprom.cells(), ElementsAre(7, 8));
    EXPECT_THAT(eeprom.writes(), ElementsAre(1, 1));
}

TEST(Eeprom, WritesAgainAfterAPowerFailure) {
    Eeprom eeprom = cutAt(kStart + 100, 2);
    eeprom.write(0, kNew, kStart + 200);
    Noise noise(1);
    eeprom.powerFails(kStart + 200 + 3400, noise);
    EXPECT_EQ(eeprom.read(0), kNew);
}

TEST(Eeprom, CountsEachWriteAlsoOfTheSameValue) {
    Eeprom eeprom = cellsOf(3);
    eeprom.write(1, kOld, 0);
    eeprom.write(1, kOld, 0);
    eeprom.write(2, kNew, 0);
    EXPECT_THAT(eeprom.writes(), ElementsAre(0, 2, 1));
}

TEST(Eeprom, CountsHalfAWriteAndNoneThatNeverBegan) {
    EXPECT_THAT(cutAt(kStart + 3400 + 1, 4).writes(), ElementsAre(1, 1, 0, 0));
}

TEST(Eeprom, TheOldestOfTooManyWritesCountsAsDone) {
    Eeprom eeprom = cellsOf(2);
    eeprom.write(0, kNew, kStart);
    for (std::size_t i = 0; i < Eeprom::kMostPending; ++i) {
        eeprom.write(1, kNew, kStart);
    }
    Noise noise(1);
    eeprom.powerFails(kStart + 1, noise);
    EXPECT_EQ(eeprom.read(0), kNew);
    EXPECT_THAT(eeprom.writes(), ElementsAre(1, 0));
}

}  // namespace
}  // namespace korvane::ecu
