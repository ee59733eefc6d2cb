#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/ParameterNames.h"
#include "ecu/memory/FirmwareMemory.h"

namespace korvane::ecu {
namespace {

FirmwareMemory memoryOf(int type) {
    return {firmwareType(type), {}};
}

std::array<std::uint8_t, kHalfCells> half(std::uint8_t value) {
    std::array<std::uint8_t, kHalfCells> cells{};
    cells.fill(value);
    return cells;
}

TEST(FirmwareMemory, HasSensibleFactoryContents) {
    const FirmwareMemory memory = memoryOf(11);
    EXPECT_EQ(memory.eeprom().size(), 3001U);
    EXPECT_EQ(memory.byteOf("INJ_MODE_OFFSET"), 2);
    EXPECT_EQ(memory.byteOf("INJ_MULTIPLIER_OFF"), 2);
    EXPECT_EQ(memory.byteOf("MINTHR_OFF"), 20);
    EXPECT_EQ(memory.byteOf("MAXTHR_OFF"), 230);
    EXPECT_EQ(memory.wordOf("RPM_LIMIT_LOW_OFF"), 7200);
    EXPECT_EQ(memory.wordOf("IDLEPID_SETPOINT_LO"), 900);
    EXPECT_EQ(memory.wordOf("CYL_COUNT_OFF"), 4);
}

TEST(FirmwareMemory, KeepsTheMiscBlockInCells2To10) {
    FirmwareMemory memory = memoryOf(11);
    memory.setMisc(std::array<std::uint8_t, 9>{1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(memory.read(2), 7200 % 256) << "only the working block changes before the commit";
    memory.commitMisc();
    EXPECT_THAT(memory.eeprom().subspan(2, 9), testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(FirmwareMemory, AWriteIntoTheMiscBlockIsFeltAtOnce) {
    FirmwareMemory memory = memoryOf(11);
    memory.write(10, 5);
    EXPECT_EQ(memory.misc()[8], 5);
    memory.write(2, 99);
    EXPECT_EQ(memory.misc()[0], 99);
}

TEST(FirmwareMemory, StoresMapsWhereTheParametersSay) {
    FirmwareMemory memory = memoryOf(11);
    memory.fillHalf(MapKind::Fuel, false, half(11));
    memory.fillHalf(MapKind::Ignition, false, half(22));
    memory.fillHalf(MapKind::Pwm, false, half(33));
    memory.commit(MapKind::Fuel);
    EXPECT_EQ(memory.read(16), 11);
    EXPECT_EQ(memory.read(175), 11);
    EXPECT_EQ(memory.read(176), 0);
    EXPECT_NE(memory.read(180), 22) << "each map has its own commit";
    memory.commit(MapKind::Ignition);
    EXPECT_EQ(memory.read(180), 22);
    EXPECT_EQ(memory.read(339), 22);
    memory.commit(MapKind::Pwm);
    EXPECT_EQ(memory.read(400), 33);
    EXPECT_EQ(memory.read(495), 33);
    EXPECT_EQ(memory.byteOf("MAPGAIN_OFF"), 10) << "cell 496 is no part of the table";
}

TEST(FirmwareMemory, WorkingAndStoredMapsAreApart) {
    FirmwareMemory memory = memoryOf(11);
    const int before = memory.stored(MapKind::Fuel)[5];
    EXPECT_TRUE(memory.setCell(MapKind::Fuel, 5, 200));
    EXPECT_EQ(memory.working(MapKind::Fuel)[5], 200);
    EXPECT_EQ(memory.stored(MapKind::Fuel)[5], before);
    memory.reload();
    EXPECT_EQ(memory.working(MapKind::Fuel)[5], before);
    memory.write(16 + 5, 77);
    EXPECT_EQ(memory.working(MapKind::Fuel)[5], before);
    memory.reload();
    EXPECT_EQ(memory.working(MapKind::Fuel)[5], 77);
}

TEST(FirmwareMemory, OnlyLargeFirmwareHasASecondHalf) {
    FirmwareMemory small = memoryOf(11);
    EXPECT_FALSE(small.fillHalf(MapKind::Fuel, true, half(1)));
    EXPECT_FALSE(small.setCell(MapKind::Fuel, 160, 1));
    EXPECT_EQ(std::ranges::count(small.working(MapKind::Fuel), 0), 160);
    FirmwareMemory large = memoryOf(15);
    EXPECT_TRUE(large.fillHalf(MapKind::Fuel, true, half(123)));
    EXPECT_EQ(large.working(MapKind::Fuel)[160], 123);
    EXPECT_EQ(large.working(MapKind::Fuel)[319], 123);
    EXPECT_FALSE(large.setCell(MapKind::Fuel, 320, 1));
    EXPECT_FALSE(large.fillHalf(MapKind::Pwm, true, half(1))) << "the PWM table is never large";
    EXPECT_FALSE(large.setCell(MapKind::Fuel, -1, 1));
}

TEST(FirmwareMemory, BothHalvesOfALargeMapOutliveARestart) {
    FirmwareMemory memory = memoryOf(213);
    memory.fillHalf(MapKind::Fuel, true, half(111));
    memory.fillHalf(MapKind::Ignition, true, half(99));
    memory.commit(MapKind::Fuel);
    memory.commit(MapKind::Ignition);
    memory.reload();
    EXPECT_EQ(memory.working(MapKind::Fuel)[200], 111);
    EXPECT_EQ(memory.working(MapKind::Ignition)[319], 99);
}

TEST(FirmwareMemory, MapsAndNamedParametersDoNotOverlap) {
    const std::vector<std::string_view> starts = {"INJ_OFF", "IGN_OFF", "PWM_OFF"};
    for (const core::ParameterName& row : core::parameterNames()) {
        if (std::ranges::find(starts, row.name) != starts.end()) {
            continue;
        }
        for (const MapKind kind : {MapKind::Fuel, MapKind::Ignition, MapKind::Pwm}) {
            for (int i = 0; i < kMapCells; ++i) {
                EXPECT_NE(mapAddress(kind, i), row.address) << row.name;
            }
        }
    }
}

TEST(FirmwareMemory, ThereIsNothingBeyondTheLastCell) {
    FirmwareMemory memory = memoryOf(11);
    memory.write(3001, 1);
    memory.write(-1, 1);
    EXPECT_EQ(memory.read(3001), 255);
    EXPECT_EQ(memory.read(-1), 255);
    memory.write(3000, 8);
    EXPECT_EQ(memory.read(3000), 8);
}

TEST(FirmwareMemory, TypesDifferInTheirMaps) {
    EXPECT_EQ(memoryOf(30).wordOf("IDLEPID_SPEED"), 4500) << "type 30 keeps its launch limit there";
    EXPECT_EQ(memoryOf(11).byteOf("IDLEPID_SPEED"), 8);
    EXPECT_EQ(std::ranges::count(memoryOf(20).working(MapKind::Ignition), 0), 320);
    EXPECT_EQ(std::ranges::count(memoryOf(31).working(MapKind::Fuel), 0), 320);
    EXPECT_NE(memoryOf(31).working(MapKind::Ignition)[0], 0);
    EXPECT_EQ(std::ranges::count(memoryOf(14).working(MapKind::Fuel), 0), 0);
    EXPECT_EQ(std::ranges::count(memoryOf(112).working(MapKind::Fuel), 0), 320);
}

TEST(FirmwareMemory, CountsItsChanges) {
    FirmwareMemory memory = memoryOf(11);
    auto seen = memory.revision();
    const auto changed = [&] { return std::exchange(seen, memory.revision()) != memory.revision(); };
    memory.write(345, 4);
    EXPECT_TRUE(changed());
    memory.setCell(MapKind::Fuel, 1, 1);
    EXPECT_TRUE(changed());
    memory.fillHalf(MapKind::Fuel, false, half(1));
    EXPECT_TRUE(changed());
    memory.setMisc(std::array<std::uint8_t, 9>{});
    EXPECT_TRUE(changed());
    memory.reload();
    EXPECT_TRUE(changed());
    EXPECT_FALSE(changed());
}

}  // namespace
}  // namespace korvane::ecu
