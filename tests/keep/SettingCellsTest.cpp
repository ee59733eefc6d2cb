#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "keep/restore/SettingCells.h"

namespace korvane::keep {
namespace {

using link::Known;

class CellsOfAPoint : public testing::Test {
protected:
    [[nodiscard]] link::EepromCell cell(std::size_t address) const { return cellsOf(places_, point_).at(address); }

    CellsOfAPoint() { places_.RPM_LIMIT_LOW_OFF = 2; }

    core::ParameterAddresses places_;
    Snapshot point_;
};

TEST_F(CellsOfAPoint, AreThoseThatWereTold) {
    point_.eeprom.at(511) = {7, Known::Told};
    EXPECT_EQ(cell(511), (link::EepromCell{7, Known::Told}));
    EXPECT_EQ(cell(2).known, Known::No) << "no misc block was heard";
}

// The block is in cells 2 to 10.
TEST_F(CellsOfAPoint, HaveTheMiscBlock) {
    point_.misc = MiscBytes{11, 12, 13, 14, 15, 16, 17, 18, 19};
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(cell(2 + i), (link::EepromCell{static_cast<std::uint8_t>(11 + i), Known::Told}));
    }
    EXPECT_EQ(cell(1).known, Known::No);
    EXPECT_EQ(cell(11).known, Known::No);
}

TEST_F(CellsOfAPoint, WereToldOneByOneBeforeTheBlockIsAsked) {
    point_.misc = MiscBytes{11, 12, 13, 14, 15, 16, 17, 18, 19};
    point_.eeprom.at(4) = {99, Known::Told};
    EXPECT_EQ(cell(4), (link::EepromCell{99, Known::Told}));
}

TEST(RunsOnAnother, IsAboutTheMiscBlockAsItWasToldLast) {
    core::ParameterAddresses places;
    places.RPM_LIMIT_LOW_OFF = 2;
    const MiscBytes running{11, 12, 13, 14, 15, 16, 17, 18, 19};
    EXPECT_FALSE(runsOnAnother(places, running, 2, 11));
    EXPECT_TRUE(runsOnAnother(places, running, 2, 12));
    EXPECT_TRUE(runsOnAnother(places, running, 10, 11));
    EXPECT_FALSE(runsOnAnother(places, running, 1, 0));
    EXPECT_FALSE(runsOnAnother(places, running, 11, 0));
    EXPECT_FALSE(runsOnAnother(places, std::nullopt, 2, 0));
}

}  // namespace
}  // namespace korvane::keep
