#include <gtest/gtest.h>

#include "core/tables/Module1.h"
#include "keep/compare/Comparison.h"
#include "keep/compare/DiffWords.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

constexpr std::string_view kUp = "\u25B2";
constexpr std::string_view kDown = "\u25BC";

// One count of fuel is 1/36 ms in injection mode 2, one of PWM 1/72 ms; ignition has 0.2 degrees.
class DiffWordsTest : public testing::Test {
protected:
    DiffWordsTest() {
        auto& tables = program_.tables;
        tables.InjOff_type = 0;
        tables.EEParams.at(static_cast<std::size_t>(tables.addresses.INJ_MODE_OFFSET)).value = std::uint8_t{2};
        for (auto* side : {&left_, &right_}) {
            for (auto& map : side->maps) {
                map.size = 160;
                std::fill_n(map.bytes.begin(), 160, std::uint8_t{36});
            }
        }
    }

    [[nodiscard]] Comparison compared(double offset = 0) {
        return {left_, right_, program_.tables, program_.program.frmMisc().settings(), offset};
    }
    [[nodiscard]] DiffCell cell(std::size_t map, std::size_t at, Unit unit, double offset = 0) {
        const auto comparison = compared(offset);
        return gridOf(comparison.map(map), unit).at(at);
    }
    void setSetting(std::size_t address, int left, int right) {
        left_.eeprom.at(address) = static_cast<std::uint8_t>(left);
        right_.eeprom.at(address) = static_cast<std::uint8_t>(right);
    }
    [[nodiscard]] std::string deltaOf(int address) {
        const auto comparison = compared();
        for (const auto& each : comparison.all.settings) {
            if (comparison.settings[each.setting].address == address) {
                return settingDelta(comparison.settings[each.setting], each, program_.tables);
            }
        }
        return "no such row";
    }

    support::VirtualProgram program_;
    Side left_, right_;
};

TEST_F(DiffWordsTest, FuelIsInMilliseconds) {
    left_.maps[0].bytes[17] = 72;
    right_.maps[0].bytes[17] = 90;
    EXPECT_EQ(cell(0, 17, Unit::Tuner),
              (DiffCell{"2", "2.5", "+0.5", Sign::Up,
                        "Fuel, 1500 RPM, 10-20 %: left 2 ms (72), right 2.5 ms (90), difference +0.5 ms (+18)"}));
}

// 144 counts of 1/288 ms are half a millisecond.
TEST_F(DiffWordsTest, FuelIsShiftedByTheInjectionOffset) {
    left_.maps[0].bytes[17] = 72;
    EXPECT_EQ(cell(0, 17, Unit::Tuner, 144).left, "2.5");
    EXPECT_EQ(cell(0, 17, Unit::Tuner, 144).delta, "-1");
}

TEST_F(DiffWordsTest, IgnitionIsInDegreesAndPwmInMilliseconds) {
    left_.maps[1].bytes[0] = 60;
    right_.maps[1].bytes[0] = 55;
    EXPECT_EQ(cell(1, 0, Unit::Tuner).words,
              "Ignition, 1000 RPM, 0-10 %: left 12 degrees (60), right 11 degrees (55), difference -1 degrees (-5)");
    EXPECT_EQ(cell(1, 0, Unit::Tuner).sign, Sign::Down);
    EXPECT_EQ(cell(2, 70, Unit::Tuner).left, "0.5");
}

TEST_F(DiffWordsTest, CountsAreTheBytes) {
    left_.maps[1].bytes[0] = 60;
    right_.maps[1].bytes[0] = 55;
    const auto shown = cell(1, 0, Unit::Counts);
    EXPECT_EQ(shown.left, "60");
    EXPECT_EQ(shown.right, "55");
    EXPECT_EQ(shown.delta, "-5");
}

TEST_F(DiffWordsTest, AnUnknownCellIsNoDifference) {
    left_.maps[0].bytes[5].reset();
    EXPECT_EQ(cell(0, 5, Unit::Tuner),
              (DiffCell{"?", "1", "", Sign::None, "Fuel, 3500 RPM, 0-10 %: left not known, right 1 ms (36)"}));
    EXPECT_EQ(cell(0, 6, Unit::Tuner).words, "Fuel, 4000 RPM, 0-10 %: left 1 ms (36), right 1 ms (36), no difference");
}

TEST_F(DiffWordsTest, TheSummaryOfAMapSaysWhatIsCompared) {
    right_.maps[0].bytes[5] = 0;
    right_.maps[0].bytes[6].reset();
    EXPECT_EQ(summaryOf(compared().map(0)), "Fuel: 1 of 160 cells differ; 1 is known on one side only.");
    EXPECT_EQ(compared().mapCaption(0), "Fuel (1)");
    EXPECT_EQ(compared().mapCaption(1), "Ignition (0)");
    right_.maps[0].size = 320;
    EXPECT_EQ(summaryOf(compared().map(0)),
              "Fuel: the left map has 160 cells, the right one 320. They stand for other speeds and loads, and are not "
              "compared.");
    EXPECT_EQ(compared().mapCaption(0), "Fuel");
    EXPECT_TRUE(gridOf(compared().map(0), Unit::Tuner).empty());
}

// CHARGE_TIME_OFF is in steps of 0.02, ACCEL_OFF in 1/72 ms, which a box shows with four decimals.
TEST_F(DiffWordsTest, ASettingIsInTheUnitOfItsBox) {
    setSetting(13, 100, 150);
    EXPECT_EQ(deltaOf(13), std::string(kUp) + " +1 (+50)");
    setSetting(350, 108, 36);
    EXPECT_EQ(deltaOf(350), std::string(kDown) + " -1 ms (-72)");
    setSetting(365, 7, 9);
    EXPECT_EQ(deltaOf(365), std::string(kUp) + " +2");
    left_.eeprom[365].reset();
    EXPECT_EQ(deltaOf(365), "");
}

TEST_F(DiffWordsTest, AValueIsShownWithItsCountWhereThatIsAnother) {
    const auto& tables = program_.tables;
    const auto settings = compared().settings;
    const auto at = [&](int address) -> const Setting& {
        return *std::find_if(settings.begin(), settings.end(),
                             [&](const Setting& each) { return !each.isMisc && each.address == address; });
    };
    EXPECT_EQ(settingText(at(13), 125, tables), "2.5 (125)");
    EXPECT_EQ(settingText(at(350), 36, tables), "0.5 ms (36)");
    EXPECT_EQ(settingText(at(365), 7, tables), "7");
    EXPECT_EQ(settingText(at(365), std::nullopt, tables), "not known");
}

TEST_F(DiffWordsTest, TheTextOfAComparisonHasALineForEachDifference) {
    left_.name = "ECU";
    right_.name = "working maps";
    right_.note = "A note.";
    right_.maps[0].bytes[17] = 90;
    setSetting(365, 7, 9);
    setSetting(366, 7, 7);
    const auto lines = linesOf(compared(), program_.tables);
    const std::vector<std::string> expected{
        "Left:  ECU",
        "Right: working maps (A note.)",
        "",
        "Fuel: 1 of 160 cells differ.",
        "cell  place             left ms  right ms  difference ms  left count  right count  difference count",
        "18    1500 RPM, 10-20 %  1        2.5       +1.5           36          90           +54",
        "",
        "Ignition: 0 of 160 cells differ.",
        "",
        "PWM: 0 of 160 cells differ.",
        "",
        "Settings: 1 of 2 differ.",
        "address  name        setting  left  right  difference",
        std::string("365      MINTHR_OFF           7     9      ") + std::string(kUp) + " +2",
    };
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        // The width of a column is that of its longest text.
        const auto words = [](std::string text) {
            for (auto at = text.find("  "); at != std::string::npos; at = text.find("  ")) {
                text.erase(at, 1);
            }
            return text;
        };
        EXPECT_EQ(words(lines[i]), words(expected[i]));
    }
    EXPECT_EQ(lines[5].find("2.5"), lines[4].find("right ms"));
    EXPECT_EQ(lines[13].find(kUp), lines[12].find("difference"));
}

TEST_F(DiffWordsTest, AComparisonChangesNoTable) {
    auto& mode = program_.tables.EEParams.at(static_cast<std::size_t>(program_.tables.addresses.INJ_MODE_OFFSET)).value;
    mode = std::uint8_t{7};
    static_cast<void>(compared());
    EXPECT_EQ(mode, core::ParameterValue(std::uint8_t{7}));
}

}  // namespace
}  // namespace korvane::keep
