#include <gtest/gtest.h>
#include <vector>

#include "link/EcuMap.h"
#include "platform/RuntimeError.h"

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

TEST_F(EcuMapTest, AReadOfWhatItRunsOnSaysNothingOfTheStore) {
    read(7);
    map.changed(kCell, 9);
    read(9);
    expect(9, 7);
    read(8);
    expect(8, 8);
}

TEST_F(EcuMapTest, HasNoCellsBeyondTheMap) {
    EXPECT_NO_THROW(map.changed(319, 1));
    EXPECT_THROW(map.changed(320, 1), platform::RuntimeError);
    EXPECT_THROW(static_cast<void>(map.working(320)), platform::RuntimeError);
}

}  // namespace
}  // namespace korvane::link
