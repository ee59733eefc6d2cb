// The keys `cut`, `power` and `wear`.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Wire.h"
#include "ecu/memory/EepromFile.h"
#include "support/TempFolder.h"

namespace korvane::ecu::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const Bytes kStarted = {170, 0, 0x55};

Bytes cellsOf(const Wire& wire, std::size_t first, std::size_t count) {
    const auto cells = wire.ecu.eeprom().subspan(first, count);
    return {cells.begin(), cells.end()};
}

void setKey(Wire& wire, std::string_view key, std::string_view value) {
    EXPECT_EQ(wire.ecu.set(key, value, wire.now), "");
}

// A fuel map of 160 times `value`.
Bytes fuelMap(std::uint8_t value) {
    return joined({'F'}, Bytes(160, value), {0xB9});
}

TEST(Power, EndsWithTheLastByteThatIsCounted) {
    Wire wire("cut=7");
    wire.send({'g', 10, 10, 99, 99, 0x98});
    EXPECT_EQ(wire.poll().size(), 0U) << "the answer is lost with the power";
    EXPECT_FALSE(wire.ecu.settings().powered);
    wire.send({'g', 10, 10, 77, 77, 0x98});
    EXPECT_THAT(wire.ask({'x', 'y', 0, 0x86, 'X', 0xA7}), IsEmpty());
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[10], 99) << "nothing is heard without power";
}

TEST(Power, IsThereUntilThen) {
    Wire wire("cut=2");
    EXPECT_EQ(wire.poll().size(), 19U);
    EXPECT_THAT(wire.poll(), IsEmpty());
}

TEST(Power, IsNeverCutByZero) {
    Wire wire("cut=2");
    setKey(wire, "cut", "0");
    wire.poll();
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(Power, IsCutDuringARestartToo) {
    Wire wire("cut=4");
    wire.send({'X', 0xA7, 'x', 'x'});
    EXPECT_THAT(wire.arrives(), IsEmpty());
}

TEST(Power, BytesUnderWayAreLostWithIt) {
    Wire wire;
    wire.ecu.receive('f', 0);
    wire.now = 2000;
    setKey(wire, "power", "0");
    EXPECT_LT(wire.arrives().size(), 14U);
    EXPECT_EQ(wire.ecu.nextDue(), std::nullopt);
}

TEST(Power, HalfACommandIsForgottenWithIt) {
    Wire wire;
    wire.send({'g', 10, 10});
    setKey(wire, "power", "0");
    setKey(wire, "power", "1");
    wire.pass(0.25);
    wire.send({99, 99, 0x98});
    EXPECT_NE(wire.ecu.workingMap(MapKind::Fuel)[10], 99);
}

// The short form of 'o' is over after 50 ms of silence.
TEST(Power, AShortCommandThatIsNotOverIsForgottenWithIt) {
    Wire wire;
    wire.send({'P', 100, 100, 77, 77, 0xAF, 'o'});
    setKey(wire, "power", "0");
    wire.arrives();
    EXPECT_NE(wire.ecu.eeprom()[400 + 100 - 64], 77);
}

TEST(Power, ItsReturnIsAStart) {
    Wire wire;
    wire.send({'g', 10, 10, 99, 99, 0x98});
    setKey(wire, "power", "0");
    EXPECT_THAT(wire.arrives(), IsEmpty());
    setKey(wire, "power", "1");
    EXPECT_THAT(wire.arrives(249'999), IsEmpty());
    EXPECT_EQ(wire.arrives(), kStarted);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel), wire.ecu.storedMap(MapKind::Fuel));
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(Power, ThatIsThereIsNotGivenAgain) {
    Wire wire;
    setKey(wire, "power", "1");
    EXPECT_THAT(wire.arrives(), IsEmpty());
}

TEST(Power, MayBeMissingAtTheStart) {
    Wire wire("power=0");
    EXPECT_THAT(wire.poll(), IsEmpty());
    setKey(wire, "power", "1");
    EXPECT_EQ(wire.arrives(), kStarted);
}

TEST(Power, TheAlarmNeedsIt) {
    Wire wire;
    setKey(wire, "power", "0");
    setKey(wire, "alarm", "1");
    EXPECT_THAT(wire.arrives(), IsEmpty());
}

TEST(Power, TheEngineStallsWithoutItAndStartsCold) {
    Wire wire("drive=idle");
    wire.poll();
    wire.pass(300);
    wire.poll();
    EXPECT_TRUE(wire.ecu.engine().running);
    const double warm = wire.ecu.engine().waterC;
    setKey(wire, "power", "0");
    setKey(wire, "power", "1");
    wire.pass(0.25);
    wire.poll();
    EXPECT_LT(wire.ecu.engine().runningSeconds, 1.0);
    EXPECT_LT(wire.ecu.engine().waterC, warm - 30.0);
}

// The poll arrives 100.2 ms after the commit letter: 29 cells take 98.6 ms, and the next one is being erased.
TEST(Power, EndsInTheMiddleOfStoringAMap) {
    Wire wire("cut=164");
    const Bytes old = cellsOf(wire, 16, 160);
    wire.send(fuelMap(222));
    wire.send({'c'});
    wire.now += 100'000;
    wire.send({'x'});
    const Bytes cells = cellsOf(wire, 16, 160);
    EXPECT_THAT(Bytes(cells.begin(), cells.begin() + 29), Each(222));
    EXPECT_EQ(cells[29] & old[29], old[29]);
    EXPECT_EQ(Bytes(cells.begin() + 30, cells.end()), Bytes(old.begin() + 30, old.end()));
}

TEST(Power, EndsInTheMiddleOfWhatItsLastByteBegins) {
    Wire wire("cut=163");
    const Bytes old = cellsOf(wire, 16, 160);
    wire.send(fuelMap(222));
    wire.send({'c'});
    const Bytes cells = cellsOf(wire, 16, 160);
    const auto end = std::ranges::find_if(cells, [](std::uint8_t cell) { return cell != 222; });
    ASSERT_NE(end, cells.end());
    const auto behind = end - cells.begin() + 1;
    EXPECT_EQ(Bytes(end + 1, cells.end()), Bytes(old.begin() + behind, old.end()));
    setKey(wire, "power", "1");
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[0], cells[0]);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[159], old[159]);
}

TEST(Power, TheSeedPicksThePart) {
    const auto left = [](std::string_view keys) {
        Wire wire(keys);
        wire.send(fuelMap(222));
        wire.send({'c'});
        return cellsOf(wire, 16, 160);
    };
    EXPECT_EQ(left("cut=163,seed=5"), left("cut=163,seed=5"));
    EXPECT_NE(left("cut=163,seed=5"), left("cut=163,seed=6"));
}

TEST(Power, TheSeedMayChangeBefore) {
    Wire one("cut=163,seed=5");
    Wire two("cut=163,seed=6");
    setKey(two, "seed", "5");
    for (Wire* wire : {&one, &two}) {
        wire->send(fuelMap(222));
        wire->send({'c'});
    }
    EXPECT_EQ(cellsOf(one, 16, 160), cellsOf(two, 16, 160));
}

TEST(Power, AMapThatIsStoredStays) {
    Wire wire;
    wire.send(fuelMap(222));
    wire.send({'c'});
    wire.pass(160 * 0.0034);
    setKey(wire, "power", "0");
    EXPECT_THAT(cellsOf(wire, 16, 160), Each(222));
}

// Cell 1013 has 0 from the factory: whatever the moment, some bits of 0xF0 or none, and any others.
TEST(Power, ASingleWriteIsHitInItsMiddle) {
    int whole = 0;
    for (int seed = 0; seed < 50; ++seed) {
        Wire wire("cut=6,seed=" + std::to_string(seed));
        wire.send({'W', 0xF5, 0x03, 0xF0, 0xF0, 0xA8});
        const std::uint8_t cell = wire.ecu.eeprom()[1013];
        whole += cell == 0 || cell == 0xF0 ? 1 : 0;
    }
    EXPECT_LT(whole, 10);
}

TEST(Power, TheMiscBlockIsStoredCellByCell) {
    Wire wire;
    const Bytes old = cellsOf(wire, 2, 9);
    wire.send({'M', 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xB2, 'd'});
    wire.now += 4 * 3400 - 200;
    setKey(wire, "power", "0");
    EXPECT_THAT(cellsOf(wire, 2, 4), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(cellsOf(wire, 6, 5), Bytes(old.begin() + 4, old.end()));
}

TEST(Power, TheUpperHalfOfALargeMapIsStoredBehindTheLower) {
    Wire wire("type=14");
    wire.send(fuelMap(222));
    wire.send(joined({246}, Bytes(160, 221), {9}));
    const Bytes old = cellsOf(wire, 1100, 160);
    wire.send({'c'});
    wire.now += 200 * 3400 - 200;
    setKey(wire, "power", "0");
    EXPECT_THAT(cellsOf(wire, 16, 160), Each(222));
    const Bytes upper = cellsOf(wire, 1100, 160);
    EXPECT_THAT(Bytes(upper.begin(), upper.begin() + 40), Each(221));
    EXPECT_EQ(Bytes(upper.begin() + 40, upper.end()), Bytes(old.begin() + 40, old.end()));
}

TEST(Power, OnlyItsEndInterruptsStoring) {
    Wire wire;
    wire.send(fuelMap(222));
    wire.send({'c', 'X', 0xA7});
    EXPECT_EQ(wire.arrives(), joined({'F', 1, 1, 0xB9}, kStarted, {}));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[159], 222);
}

TEST(Power, WhatIsBeingStoredIsReadAtOnce) {
    Wire wire;
    wire.send({'W', 0xF5, 0x03, 0xF0, 0xF0, 0xA8});
    EXPECT_THAT(wire.ask({'R', 0xF5, 0x03, 0xAD}), ElementsAre('T', 3, 0xF0, 0xF5, 0x03, 0xAB));
}

TEST(Wear, CountsTheWritesOfEachCell) {
    Wire wire;
    EXPECT_THAT(Bytes(wire.ecu.writes().begin(), wire.ecu.writes().end()), Each(0));
    wire.send(fuelMap(222));
    wire.send({'c', 'c', 'M', 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xB2, 'd', 'W', 2, 0, 1, 1, 0xA8, '(', 0xD7});
    const auto writes = wire.ecu.writes();
    EXPECT_THAT(writes.subspan(16, 160), Each(2));
    EXPECT_THAT(writes.subspan(0, 12), ElementsAre(0, 0, 2, 1, 1, 1, 1, 1, 1, 1, 1, 0));
    EXPECT_EQ(std::ranges::count_if(writes, [](auto count) { return count != 0; }), 160 + 9 + 1);
}

TEST(Wear, IsThatOfThisBox) {
    Wire wire;
    wire.send({'W', 2, 0, 1, 1, 0xA8});
    setKey(wire, "power", "0");
    setKey(wire, "power", "1");
    EXPECT_EQ(wire.ecu.writes()[2], 1U) << "it outlives the power";
    setKey(wire, "type", "14");
    EXPECT_EQ(wire.ecu.writes()[2], 0U);
}

class WearFile : public testing::Test {
protected:
    const support::TempFolder folder_;
    const std::string wear_ = folder_ / "wear.txt";
};

TEST_F(WearFile, HasALineForEachCell) {
    Wire wire;
    wire.send({'W', 1, 0, 9, 9, 0xA8, 'W', 1, 0, 9, 9, 0xA8});
    setKey(wire, "wear", wear_);
    std::string expected = "0\n2\n";
    for (int i = 2; i < 3001; ++i) {
        expected += "0\n";
    }
    EXPECT_EQ(folder_.read("wear.txt"), expected);
    EXPECT_EQ(wire.ecu.finish(), "");
}

TEST_F(WearFile, IsWrittenAtTheEndBesideTheEeprom) {
    const std::string save = folder_ / "save.txt";
    Wire wire("wear=" + wear_ + ",save=" + save);
    EXPECT_FALSE(std::filesystem::exists(wear_));
    EXPECT_EQ(wire.ecu.finish(), "");
    EXPECT_TRUE(std::filesystem::exists(wear_));
    EXPECT_TRUE(std::filesystem::exists(save));
}

TEST_F(WearFile, ThatCantBeWrittenIsNamed) {
    const std::string nowhere = folder_.nowhere();
    Wire wire("wear=" + nowhere);
    EXPECT_THAT(wire.ecu.finish(), testing::StartsWith("the wear of the EEPROM can't be saved to " + nowhere + ": "));
    EXPECT_EQ(wire.ecu.set("wear", nowhere, 0), wire.ecu.finish());
}

}  // namespace
}  // namespace korvane::ecu::test
