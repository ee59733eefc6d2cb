#include <gtest/gtest.h>

#include "keep/point/Snapshot.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

class SnapshotTest : public testing::Test {
protected:
    [[nodiscard]] Snapshot snapshot(const std::optional<MiscBytes>& misc = {}) {
        return snapshotOf(program_.tables, program_.window, misc, {2026, 5, 6, 7, 8, 9});
    }

    support::VirtualProgram program_;
};

TEST_F(SnapshotTest, HasTheEcuAndTheTime) {
    program_.connect();
    program_.receiveFrame('y', {0x12, 0x34, 0x0D, 0x3A, 11});
    const auto made = snapshot();
    EXPECT_EQ(made.ecu.swType, 11);
    EXPECT_EQ(made.ecu.features, 0x1234);
    EXPECT_FLOAT_EQ(made.ecu.hwVersion, 3.386F);
    EXPECT_EQ(made.time, (platform::WallTime{2026, 5, 6, 7, 8, 9}));
}

TEST_F(SnapshotTest, HasWhatTheEcuRunsOnWhatItStoredAndWhatTheTunerHas) {
    program_.connect();
    program_.receiveFrame('f', support::Bytes(160, 50));
    program_.window.ecuMaps.fuel.changed(3, 51);
    program_.tables.FuelMapOut[4] = 52;
    const auto fuel = snapshot().fuel;
    EXPECT_EQ(fuel.working[3], 51);
    EXPECT_EQ(fuel.kept[3], 50);
    EXPECT_EQ(fuel.edited[3], 50);
    EXPECT_EQ(fuel.working[4], 50);
    EXPECT_EQ(fuel.edited[4], 52);
    EXPECT_EQ(fuel.working[160], std::nullopt);
}

TEST_F(SnapshotTest, KnowsTheMiscBlockOnlyWhereItWasHeard) {
    EXPECT_EQ(snapshot().misc, std::nullopt);
    const MiscBytes block{1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(snapshot(block).misc, block);
}

TEST_F(SnapshotTest, HasTheBytesOfTheEepromThatWereReadOrWrittenInThisConnection) {
    program_.connect();
    program_.receiveFrame('T', {7, 0x00, 0x02});
    program_.program.eeprom().WriteEE(600, 9);
    const auto cells = snapshot().eeprom;
    EXPECT_EQ(cells[0x200], (link::EepromCell{7, link::Known::Told}));
    EXPECT_EQ(cells[600], (link::EepromCell{9, link::Known::Sent}));
    EXPECT_EQ(cells[601].known, link::Known::No);

    program_.program.disconnect();
    program_.connect();
    EXPECT_EQ(snapshot().eeprom, link::EepromCells());
}

}  // namespace
}  // namespace korvane::keep
