#include <gtest/gtest.h>
#include <vector>

#include "link/EcuMap.h"
#include "platform/RuntimeError.h"
#include "support/PropertyWatch.h"

namespace korvane::link {
namespace {

constexpr std::size_t kCell = 170;

struct EcuMapTest : testing::Test {
    void read(std::uint8_t byte) { map.read(kCell, std::vector<std::uint8_t>{byte}); }
    void expect(int working, int kept) const {
        EXPECT_EQ(map.working(kCell), working);
        EXPECT_EQ(map.kept(kCell), kept);
    }

    EcuMap map;
};

TEST_F(EcuMapTest, KnowsNothingBeforeTheLineHasToldIt) {
    EXPECT_EQ(map.working(kCell), std::nullopt);
    EXPECT_EQ(map.kept(kCell), std::nullopt);
}

TEST_F(EcuMapTest, HasWhatWasRead) {
    map.read(169, std::vector<std::uint8_t>{1, 2, 3});
    expect(2, 2);
    EXPECT_EQ(map.working(172), std::nullopt);
}

TEST_F(EcuMapTest, HasWhatWasSentOnceItsHalfIsAcknowledged) {
    read(7);
    map.sending(kCell, 9);
    expect(7, 7);
    map.acknowledged(0);
    expect(7, 7);
    map.acknowledged(160);
    expect(9, 7);
}

TEST_F(EcuMapTest, AnAcknowledgementWithNothingOnItsWayChangesNothing) {
    read(7);
    map.sending(kCell, 9);
    map.acknowledged(160);
    read(8);
    map.acknowledged(160);
    expect(8, 8);
}

TEST_F(EcuMapTest, KeepsWhatItWasToldToStore) {
    read(7);
    map.changed(kCell, 9);
    expect(9, 7);
    map.stored();
    expect(9, 9);
}

TEST_F(EcuMapTest, StoresAHalfThatIsAcknowledgedAfterTheOrder) {
    read(7);
    map.sending(kCell, 9);
    map.stored();
    expect(7, 7);
    map.acknowledged(160);
    expect(9, 9);
}

TEST_F(EcuMapTest, AnOrderToStoreStoresNothingThatWasNotAcknowledged) {
    read(7);
    map.changed(kCell, 8);
    map.sending(kCell, 9);
    map.stored();
    expect(8, 7);
}

TEST_F(EcuMapTest, AnOrderToStoreCountsForTheMapBeforeItAlone) {
    map.stored();
    read(7);
    map.sending(kCell, 9);
    map.acknowledged(160);
    expect(9, 7);
}

TEST_F(EcuMapTest, LosesWhatItHasNotStoredWhenItRestarts) {
    read(7);
    map.changed(kCell, 9);
    map.sending(kCell, 11);
    map.restarted();
    map.acknowledged(160);
    expect(7, 7);
}

TEST_F(EcuMapTest, AnOrderToStoreBehindARestartIsNoneForWhatWasSentBefore) {
    read(7);
    map.sending(kCell, 9);
    map.restarted();
    map.stored();
    EXPECT_EQ(map.store(), Store::Lost);
    expect(7, 7);
    map.sending(kCell, 9);
    map.stored();
    EXPECT_EQ(map.store(), Store::Ordered);
    map.acknowledged(160);
    EXPECT_EQ(map.store(), Store::Acknowledged);
}

TEST_F(EcuMapTest, AReadOfWhatItRunsOnSaysNothingOfTheStore) {
    read(7);
    map.changed(kCell, 9);
    read(9);
    expect(9, 7);
    read(8);
    expect(8, 8);
}

TEST_F(EcuMapTest, AReadConfirmsWhatWasSentThoughItsAcknowledgementWasLost) {
    read(7);
    map.sending(kCell, 9);
    read(9);
    expect(9, 7);
    map.sending(kCell, 11);
    map.stored();
    read(11);
    expect(11, 11);
}

// The cell was changed alone before; then the whole map was sent, and its acknowledgement was lost.
TEST_F(EcuMapTest, StoresWhatItRunsOnThoughTheSameByteIsNotAcknowledged) {
    read(7);
    map.changed(kCell, 9);
    map.sending(kCell, 9);
    map.stored();
    expect(9, 9);
    read(9);
    expect(9, 9);
    map.reconnected();
    expect(9, 9);
}

TEST_F(EcuMapTest, RunsOnWhatItsEepromHasOnlyOnceItHasRestarted) {
    read(7);
    map.keeps(kCell, 9);
    expect(7, 9);
    map.restarted();
    expect(9, 9);
}

TEST_F(EcuMapTest, ItsEepromDoesNotTellWhatItRunsOn) {
    map.keeps(kCell, 9);
    EXPECT_EQ(map.working(kCell), std::nullopt);
    EXPECT_EQ(map.kept(kCell), std::nullopt);
}

TEST_F(EcuMapTest, NothingIsKnownOfAnotherEcu) {
    read(7);
    int told = 0;
    const support::PropertyWatch watch(map, &map, [&] { ++told; });
    map.forget();
    EXPECT_EQ(map.working(kCell), std::nullopt);
    EXPECT_EQ(map.kept(kCell), std::nullopt);
    EXPECT_EQ(told, 1) << "views show it";
}

struct EcuMapsTest : testing::Test {
    EcuMapsTest() {
        for (auto* map : {&maps.fuel, &maps.ignition, &maps.pwm}) {
            map->read(0, std::vector<std::uint8_t>(160, 7));
        }
    }
    static void expect(const EcuMap& map, int working, int kept) {
        EXPECT_EQ(map.working(70), working);
        EXPECT_EQ(map.kept(70), kept);
    }
    void identity(std::uint8_t type) { maps.identified(std::vector<std::uint8_t>{1, 2, 13, 58, type}); }

    EcuMaps maps;
};

TEST_F(EcuMapsTest, ARestartBehindTheOrderToStoreConfirmsAPwmTable) {
    maps.pwm.sending(70, 9);
    maps.restarted();
    expect(maps.pwm, 7, 7);
    maps.pwm.sending(70, 9);
    maps.pwm.stored();
    expect(maps.pwm, 7, 7);
    maps.restarted();
    expect(maps.pwm, 9, 9);
}

TEST_F(EcuMapsTest, ARestartConfirmsNoMapThatHasAnAnswerOfItsOwn) {
    maps.fuel.sending(70, 9);
    maps.fuel.stored();
    maps.restarted();
    expect(maps.fuel, 7, 7);
}

TEST_F(EcuMapsTest, BetweenTwoConnectionsTheEcuMayHaveRestarted) {
    maps.ignition.changed(70, 9);
    maps.pwm.sending(70, 9);
    maps.pwm.stored();
    maps.connected();
    expect(maps.ignition, 7, 7);
    expect(maps.pwm, 7, 7);
}

TEST_F(EcuMapsTest, AnEcuThatNamesItselfOtherwiseIsAnother) {
    identity(11);
    expect(maps.fuel, 7, 7);
    identity(11);
    expect(maps.fuel, 7, 7);
    identity(15);
    for (const auto* map : {&maps.fuel, &maps.ignition, &maps.pwm}) {
        EXPECT_EQ(map->working(70), std::nullopt);
    }
    maps.fuel.read(70, std::vector<std::uint8_t>{8});
    identity(15);
    expect(maps.fuel, 8, 8);
}

TEST(EcuMaps, HaveTheirPlacesInTheEeprom) {
    EcuMaps maps;
    for (auto* map : {&maps.fuel, &maps.ignition, &maps.pwm}) {
        map->read(0, std::vector<std::uint8_t>(320, 7));
    }
    maps.eepromHas({}, 0, 9);
    auto places = core::parameterAddresses(11);
    for (const int address : {15, 16, 175, 176, 180, 339, 340, 399, 400, 495, 496}) {
        maps.eepromHas(places, address, 9);
    }
    const auto changed = [](const EcuMap& map) {
        std::vector<std::size_t> cells;
        for (std::size_t cell = 0; cell < 320; ++cell) {
            if (map.kept(cell) != 7) {
                cells.push_back(cell);
            }
        }
        return cells;
    };
    EXPECT_EQ(changed(maps.fuel), (std::vector<std::size_t>{0, 159}));
    EXPECT_EQ(changed(maps.ignition), (std::vector<std::size_t>{0, 159}));
    EXPECT_EQ(changed(maps.pwm), (std::vector<std::size_t>{64, 159}));
}

TEST_F(EcuMapTest, HasNoCellsBeyondTheMap) {
    EXPECT_NO_THROW(map.changed(319, 1));
    EXPECT_THROW(map.changed(320, 1), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(map.working(320)), platform::RuntimeError);
}

}  // namespace
}  // namespace korvane::link
