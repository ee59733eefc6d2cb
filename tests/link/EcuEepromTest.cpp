#include <gtest/gtest.h>
#include <limits>

#include "link/EcuEeprom.h"

namespace korvane::link {
namespace {

TEST(EcuEepromTest, KnowsNothingAtFirst) {
    const EcuEeprom eeprom;
    for (const auto& cell : eeprom.cells()) {
        ASSERT_EQ(cell.known, Known::No);
    }
}

TEST(EcuEepromTest, TellsWhatTheEcuSentFromWhatWasSentToIt) {
    EcuEeprom eeprom;
    eeprom.told(0, 7);
    eeprom.sent(3000, 9);
    EXPECT_EQ(eeprom.cells()[0], (EepromCell{7, Known::Told}));
    EXPECT_EQ(eeprom.cells()[3000], (EepromCell{9, Known::Sent}));
    eeprom.told(3000, 9);
    EXPECT_EQ(eeprom.cells()[3000], (EepromCell{9, Known::Told}));
}

TEST(EcuEepromTest, LeavesOutAddressesThatNoEepromHas) {
    EcuEeprom eeprom;
    for (const std::int64_t address : {std::int64_t{-1}, std::int64_t{3001}, std::numeric_limits<std::int64_t>::min(),
                                       std::numeric_limits<std::int64_t>::max()}) {
        eeprom.told(address, 1);
        eeprom.sent(address, 1);
    }
    EXPECT_EQ(eeprom.cells(), EepromCells());
}

TEST(EcuEepromTest, ForgetsAll) {
    EcuEeprom eeprom;
    eeprom.told(5, 1);
    eeprom.forget();
    EXPECT_EQ(eeprom.cells(), EepromCells());
}

}  // namespace
}  // namespace korvane::link
