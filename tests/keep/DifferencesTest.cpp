#include <gmock/gmock.h>
#include <random>

#include "keep/compare/Differences.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MapSide map(int size, int known, std::uint8_t byte) {
    MapSide side{.bytes = {}, .size = size};
    std::fill_n(side.bytes.begin(), known, byte);
    return side;
}

TEST(MapDifferences, AreTheCellsKnownOnBothSidesThatAreNotEqual) {
    auto left = map(160, 160, 5);
    auto right = map(160, 160, 5);
    right.bytes[3] = 6;
    right.bytes[159] = 4;
    left.bytes[10].reset();
    right.bytes[11].reset();
    left.bytes[12].reset();
    right.bytes[12].reset();
    const auto difference = differenceOf(left, right);
    EXPECT_TRUE(difference.isComparable);
    EXPECT_THAT(difference.cells, ElementsAre(3, 159));
    EXPECT_EQ(difference.knownOnOneSide, 2);
    EXPECT_EQ(difference.shape.cells(), 160);
}

TEST(MapDifferences, AMapOfAnotherSizeIsNotCompared) {
    const auto difference = differenceOf(map(160, 160, 5), map(320, 320, 6));
    EXPECT_FALSE(difference.isComparable);
    EXPECT_THAT(difference.cells, IsEmpty());
    EXPECT_EQ(difference.knownOnOneSide, 0);
}

TEST(MapDifferences, AMapOfUnknownSizeHasThatOfTheOther) {
    const auto difference = differenceOf(map(0, 160, 5), map(320, 320, 6));
    EXPECT_TRUE(difference.isComparable);
    EXPECT_EQ(difference.shape.columns, 20);
    EXPECT_EQ(difference.cells.size(), 160U);
    EXPECT_EQ(difference.knownOnOneSide, 160);
    EXPECT_EQ(differenceOf(map(0, 160, 5), map(0, 160, 6)).shape.columns, 16);
    EXPECT_EQ(differenceOf(map(160, 160, 5), map(0, 160, 5)).cells.size(), 0U);
}

// Both sides as plain arrays with a mark, and two loops over them.
TEST(MapDifferences, AreThoseOfAPlainLoop) {
    std::mt19937 random(13);
    const auto dice = [&](unsigned sides) { return random() % sides; };
    for (int round = 0; round < 300; ++round) {
        MapSide sides[2];
        const int size = dice(2) == 0 ? 160 : 320;
        for (auto& side : sides) {
            side.size = size;
            for (int cell = 0; cell < 320; ++cell) {
                if (dice(4) != 0) {
                    side.bytes.at(static_cast<std::size_t>(cell)) = static_cast<std::uint8_t>(dice(3));
                }
            }
        }
        std::vector<int> different;
        int oneSided = 0;
        for (int row = 0; row < (size == 160 ? 10 : 16); ++row) {
            for (int column = 0; column < (size == 160 ? 16 : 20); ++column) {
                const int cell = row * (size == 160 ? 16 : 20) + column;
                const int left = sides[0].bytes.at(static_cast<std::size_t>(cell)).value_or(255);
                const int right = sides[1].bytes.at(static_cast<std::size_t>(cell)).value_or(255);
                if (left == 255 || right == 255) {
                    oneSided += left != right ? 1 : 0;
                } else if (left != right) {
                    different.push_back(cell);
                }
            }
        }
        const auto found = differenceOf(sides[0], sides[1]);
        ASSERT_EQ(found.cells, different) << "round " << round;
        ASSERT_EQ(found.knownOnOneSide, oneSided) << "round " << round;
    }
}

class SettingsTest : public testing::Test {
protected:
    [[nodiscard]] std::vector<Setting> all() {
        return settingsOf(program_.tables, program_.program.frmMisc().settings());
    }
    [[nodiscard]] static const Setting* at(const std::vector<Setting>& settings, int address, bool misc = false) {
        const auto found = std::find_if(settings.begin(), settings.end(), [&](const Setting& setting) {
            return setting.address == address && setting.isMisc == misc;
        });
        return found != settings.end() ? &*found : nullptr;
    }

    support::VirtualProgram program_;
};

TEST_F(SettingsTest, AreTheMiscBlockAndEachCellThatKeepsNoMap) {
    const auto settings = all();
    EXPECT_NE(at(settings, 0), nullptr);
    EXPECT_NE(at(settings, 15), nullptr);
    EXPECT_EQ(at(settings, 16), nullptr);
    EXPECT_EQ(at(settings, 175), nullptr);
    EXPECT_NE(at(settings, 176), nullptr);
    EXPECT_EQ(at(settings, 180), nullptr);
    EXPECT_EQ(at(settings, 400), nullptr);
    EXPECT_EQ(at(settings, 495), nullptr);
    EXPECT_NE(at(settings, 2998), nullptr);
    EXPECT_EQ(at(settings, 2999), nullptr);
    EXPECT_EQ(at(settings, 1, true)->label, "RPM limit");
    EXPECT_EQ(at(settings, 2, true), nullptr);
    EXPECT_NE(at(settings, 9, true), nullptr);
}

TEST_F(SettingsTest, HaveTheNamesOfTheProgramAndOfItsSettingsWindow) {
    const auto settings = all();
    EXPECT_EQ(at(settings, 365)->name, "MINTHR_OFF");
    EXPECT_EQ(at(settings, 353)->name, "ACCEL_OFF+3");
    EXPECT_NE(at(settings, 353)->label.find("column 30"), std::string::npos) << at(settings, 353)->label;
    EXPECT_EQ(at(settings, 700)->name, "cell 700");
    EXPECT_EQ(at(settings, 700)->label, "");
}

TEST_F(SettingsTest, OfSixteenBitsAreOneRow) {
    const auto settings = all();
    for (const int low : {2, 504, 507, 509, 511, 1005, 1908}) {
        ASSERT_NE(at(settings, low), nullptr) << low;
        EXPECT_TRUE(at(settings, low)->isWord) << low;
        EXPECT_EQ(at(settings, low + 1), nullptr) << low;
    }
    EXPECT_FALSE(at(settings, 365)->isWord);
}

// 0x0102 = 258.
TEST_F(SettingsTest, OfSixteenBitsAreKnownWithBothBytesOnly) {
    const auto setting = *at(all(), 1005);
    Side side;
    side.eeprom[1005] = 2;
    EXPECT_EQ(countOf(side, setting), std::nullopt);
    side.eeprom[1006] = 1;
    EXPECT_EQ(countOf(side, setting), 258);
}

TEST_F(SettingsTest, ThatAreKnownOnOneSideOnlyAreListedAndNotCountedAsDifferent) {
    const auto settings = all();
    Side left;
    Side right;
    left.eeprom[365] = 1;
    right.eeprom[365] = 2;
    left.eeprom[366] = 0;
    left.eeprom[367] = right.eeprom[367] = 9;
    left.misc = MiscBytes{};
    const auto found = differences(left, right, settings);
    EXPECT_EQ(found.differentSettings, 1);
    EXPECT_EQ(found.settings.size(), 3U + 6U);
    for (const auto& each : found.settings) {
        EXPECT_EQ(each.differs(), settings[each.setting].address == 365) << settings[each.setting].name;
    }
}

// The names follow the layout of the type.
TEST_F(SettingsTest, AreThoseOfTheLayoutOfTheEcu) {
    program_.connect();
    program_.receiveFrame('y', {0, 0, 0, 0, 30});
    EXPECT_TRUE(at(all(), 500)->isWord);
}

}  // namespace
}  // namespace korvane::keep
