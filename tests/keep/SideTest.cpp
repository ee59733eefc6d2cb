#include <gtest/gtest.h>

#include "keep/compare/Side.h"

namespace korvane::keep {
namespace {

constexpr std::int32_t kOrdinaryType = 11;
constexpr std::int32_t kLargeType = 14;

Snapshot ecuOf(std::int32_t swType) {
    Snapshot snapshot;
    snapshot.ecu.swType = swType;
    return snapshot;
}

TEST(SideOfEcu, HasTheMapsThatItRunsOnAndTheCellsThatTheLineHasTold) {
    auto snapshot = ecuOf(kOrdinaryType);
    snapshot.fuel.working[3] = 50;
    snapshot.fuel.kept[3] = 40;
    snapshot.fuel.edited[3] = 30;
    snapshot.pwm.working[64] = 7;
    snapshot.misc = MiscBytes{1, 2, 3, 4, 5, 6, 7, 8, 9};
    snapshot.eeprom[365] = {12, link::Known::Told};
    snapshot.eeprom[366] = {13, link::Known::Sent};
    snapshot.eeprom[367] = {14, link::Known::No};
    const Side side = sideOfEcu(snapshot);
    EXPECT_EQ(side.maps[0].bytes[3], 50);
    EXPECT_EQ(side.maps[0].bytes[4], std::nullopt);
    EXPECT_EQ(side.maps[2].bytes[64], 7);
    EXPECT_EQ(side.misc, snapshot.misc);
    EXPECT_EQ(side.eeprom[365], 12);
    EXPECT_EQ(side.eeprom[366], 13);
    EXPECT_EQ(side.eeprom[367], std::nullopt);
}

TEST(SideOfEcu, HasMapsOfTheSizeOfItsType) {
    EXPECT_EQ(sideOfEcu(ecuOf(kOrdinaryType)).maps[0].size, 160);
    EXPECT_EQ(sideOfEcu(ecuOf(kLargeType)).maps[2].size, 320);
}

TEST(SideOfEcu, OfUnknownTypeHasLargeMapsOnlyWhereACellBehindASmallMapIsKnown) {
    auto snapshot = ecuOf(0);
    snapshot.ignition.working[160] = 0;
    snapshot.fuel.working[159] = 1;
    const Side side = sideOfEcu(snapshot);
    EXPECT_EQ(side.maps[0].size, 0);
    EXPECT_EQ(side.maps[1].size, 320);
}

TEST(SideOfEcu, SaysWhatWasReadBeforeTheEcuWasConnectedAgain) {
    auto snapshot = ecuOf(0);
    const ReadBefore before{.maps = true, .settings = true};
    EXPECT_EQ(sideOfEcu(snapshot, before).note, "Nothing has been read since the last connect or restart.");
    snapshot.eeprom[1] = {0, link::Known::Told};
    EXPECT_EQ(sideOfEcu(snapshot, before).note, "No map has been read since the last connect or restart.");
    snapshot.eeprom[1] = {};
    snapshot.pwm.working[64] = 0;
    EXPECT_EQ(sideOfEcu(snapshot, before).note, "No setting has been read since the last connect.");
}

TEST(SideOfEcu, SaysWhatWasNotReadYet) {
    auto snapshot = ecuOf(0);
    EXPECT_EQ(sideOfEcu(snapshot).note, "No ECU has been read yet.");
    snapshot.eeprom[1] = {0, link::Known::Told};
    EXPECT_EQ(sideOfEcu(snapshot).note, "No map has been read yet.");
    snapshot.pwm.working[64] = 0;
    EXPECT_EQ(sideOfEcu(snapshot).note, "");
    snapshot.eeprom[1] = {};
    EXPECT_EQ(sideOfEcu(snapshot).note, "No setting has been read yet.");
}

TEST(SideOfDesk, HasTheEditedMapsAndNoSetting) {
    auto snapshot = ecuOf(kOrdinaryType);
    snapshot.fuel.edited[159] = 9;
    snapshot.fuel.working[159] = 8;
    snapshot.eeprom[1] = {5, link::Known::Told};
    snapshot.misc = MiscBytes{};
    const Side side = sideOfDesk(snapshot);
    EXPECT_EQ(side.maps[0].size, 160);
    EXPECT_EQ(side.maps[0].bytes[159], 9);
    EXPECT_EQ(side.maps[0].bytes[160], std::nullopt);
    EXPECT_EQ(side.eeprom[1], std::nullopt);
    EXPECT_EQ(side.misc, std::nullopt);
    EXPECT_EQ(side.note, "");
}

TEST(SideOfDesk, OfUnknownTypeHasLargeMapsWhereSomethingIsBehindASmallOne) {
    auto snapshot = ecuOf(0);
    EXPECT_EQ(sideOfDesk(snapshot).maps[0].size, 0);
    EXPECT_EQ(sideOfDesk(snapshot).note, "No map has been read or loaded yet: all cells are 0.");
    snapshot.fuel.edited[319] = 1;
    EXPECT_EQ(sideOfDesk(snapshot).maps[0].size, 320);
    EXPECT_EQ(sideOfDesk(snapshot).maps[0].bytes[319], 1);
    EXPECT_EQ(sideOfDesk(snapshot).maps[1].size, 0);
}

}  // namespace
}  // namespace korvane::keep
