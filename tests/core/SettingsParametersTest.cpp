#include "SettingsBench.h"
#include "core/tables/Module1.h"

namespace korvane::core {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using SettingsFileParameters = SettingsBench;

constexpr const char* kParameterFault = " Error while reading parameter data";
constexpr const char* kTooFewParameters = "error: parameter data not valid";

// `count` rows of parameters that each have a value.
std::string rows(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "100#0#7#\r\n";
    }
    return text;
}

TEST_F(SettingsFileParameters, RowsAreAppliedByTheirAddressWhateverTheirNameAndNeverAsWords) {
    EXPECT_EQ(loadAll(kTables +
                      "PARAMS\r\n"
                      "1#0#5#MISC2_OFF\r\n"
                      "2#0#7500#RPM_LIMIT_LOW_OFF\r\n"
                      "13#77#9#another name\r\n"
                      "14#0#-3\r\n"
                      "2999#0#3.386#SW_VER#more\r\n" +
                      rows(4)),
              kSettingsRead);
    applied_.resize(5);
    EXPECT_THAT(applied_, ElementsAre(Applied{5, 1, false}, Applied{7500, 2, false}, Applied{9, 13, false},
                                      Applied{-3, 14, false}, Applied{3, 2999, false}));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, ARowWithoutAValueIsSkippedButCounts) {
    std::string file = kTables + "PARAMS\r\n";
    for (int i = 0; i < 9; ++i) {
        file += "365#0##MINTHR_OFF\r\n";
    }
    EXPECT_EQ(loadAll(file), kSettingsRead);
    EXPECT_THAT(applied_, IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, ABlankValueAtTheEndOfARowIsNone) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n5#0# \r\n6#0# #named\r\n  7#0# 12 #named\r\n"), kSettingsRead);
    EXPECT_THAT(applied_, ElementsAre(Applied{0, 6, false}, Applied{12, 7, false}));
}

TEST_F(SettingsFileParameters, NumbersAreWhatTheirTextsBeginWith) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n10x#0#3,7#\r\nabc#0#text#\r\n2.5#0#1E2#\r\n3.5#0#-0.5#\r\n"), kSettingsRead);
    EXPECT_THAT(applied_,
                ElementsAre(Applied{3, 10, false}, Applied{0, 0, false}, Applied{100, 2, false}, Applied{0, 4, false}));
}

TEST_F(SettingsFileParameters, ARowWithFewerThanThreeFieldsIsAFaultAndWhatCameBeforeStays) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n1#0#5#\r\n2#0\r\n3#0#6#\r\n"), kSettingsRead);
    EXPECT_THAT(applied_, ElementsAre(Applied{5, 1, false}));
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
}

TEST_F(SettingsFileParameters, AnEmptyLineIsAFaultToo) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n" + rows(20) + "\r\n"), kSettingsRead);
    EXPECT_EQ(applied_.size(), 20U);
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
}

TEST_F(SettingsFileParameters, ANumberBeyond32BitsIsAFault) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n1#0#2147483647#\r\n1#0#2147483648#\r\n"), kSettingsRead);
    EXPECT_THAT(applied_, ElementsAre(Applied{2147483647, 1, false}));
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));

    applied_.clear();
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n1E99#0#5#\r\n" + rows(20)), kSettingsRead);
    EXPECT_THAT(applied_, IsEmpty());
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
}

TEST_F(SettingsFileParameters, AnAddressThatNobodyTakesIsAFault) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n3000#0#1#\r\n3001#0#1#\r\n" + rows(20)), kSettingsRead);
    EXPECT_THAT(applied_, ElementsAre(Applied{1, 3000, false}));
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n-1#0#1#\r\n" + rows(20)), kSettingsRead);
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
}

TEST_F(SettingsFileParameters, FewerThanNineRowsAreToldAndStayApplied) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n" + rows(8)), kSettingsRead);
    EXPECT_EQ(applied_.size(), 8U);
    EXPECT_THAT(texts(), ElementsAre(kTooFewParameters));
}

TEST_F(SettingsFileParameters, NineRowsAreEnough) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n" + rows(9)), kSettingsRead);
    EXPECT_EQ(applied_.size(), 9U);
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, TheLastRowNeedsNoLineEnd) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\r\n" + rows(8) + "9#0#8#last"), kSettingsRead);
    EXPECT_EQ(applied_.back(), (Applied{8, 9, false}));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, AFileThatEndsAfterItsTablesHasTooFew) {
    EXPECT_EQ(loadAll(kTables), kSettingsRead);
    EXPECT_THAT(texts(), ElementsAre(kTooFewParameters));
}

TEST_F(SettingsFileParameters, TheFirstLineIsSkippedWhateverItSays) {
    EXPECT_EQ(loadAll(kTables + "1#0#99#\r\n" + rows(9)), kSettingsRead);
    EXPECT_THAT(applied_, Each(Applied{7, 100, false}));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, TheFirstLineIsTheRestOfTheLastTableLineIfThatHasOne) {
    const std::string tables = kTables.substr(0, kTables.size() - 2);
    EXPECT_EQ(loadAll(tables + "200  201 \r\n" + rows(9)), kSettingsRead);
    EXPECT_EQ(applied_.size(), 9U);
    EXPECT_THAT(texts(), IsEmpty());
    // The header is a row like any other then, and has too few fields.
    EXPECT_EQ(loadAll(tables + "200 \r\nPARAMS\r\n" + rows(9)), kSettingsRead);
    EXPECT_THAT(texts(), ElementsAre(kParameterFault));
}

TEST_F(SettingsFileParameters, TheHeaderIsFoundWithAndWithoutABlankBeforeIt) {
    const std::string tables = kTables.substr(0, kTables.size() - 3);
    for (const std::string end : {"\r\n", " \r\n", "   \r\n", "\n", " \r", ",", " , "}) {
        applied_.clear();
        EXPECT_EQ(loadAll(tables + end + "PARAMS\r\n" + rows(9)), kSettingsRead);
        EXPECT_EQ(applied_.size(), 9U) << end;
        EXPECT_THAT(texts(), IsEmpty()) << end;
    }
}

TEST_F(SettingsFileParameters, RowsEndAtAnyLineEnd) {
    EXPECT_EQ(loadAll(kTables + "PARAMS\n1#0#2#\r3#0#4#\r\n5#0#6#\n" + rows(6)), kSettingsRead);
    applied_.resize(3);
    EXPECT_THAT(applied_, ElementsAre(Applied{2, 1, false}, Applied{4, 3, false}, Applied{6, 5, false}));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, AFaultInATableLeavesThemAlone) {
    EXPECT_EQ(loadAll(kFuel + kIgnition + kMisc + "PARAMS\r\n" + rows(20)), kSettingsNoPwm);
    EXPECT_EQ(loadAll(kFuel + kIgnition + kMisc + "PWM\r\n 256 "), kSettingsBadPwm);
    EXPECT_THAT(applied_, IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileParameters, WhatTheProgramWroteIsAppliedRowByRow) {
    InitParams(*tables_, 30);
    tables_->EEParams[1].value = std::uint8_t{255};
    tables_->EEParams[2].value = std::int32_t{65535};
    tables_->EEParams[700].value = std::uint8_t{0};
    tables_->EEParams[2999].value = 3.1F;
    EXPECT_EQ(loadAll(saved(160)), kSettingsRead);
    EXPECT_THAT(applied_, ElementsAre(Applied{255, 1, false}, Applied{65535, 2, false}, Applied{0, 700, false},
                                      Applied{3, 2999, false}, Applied{30, 3000, false}));
    EXPECT_THAT(texts(), IsEmpty());
}

}  // namespace
}  // namespace korvane::core
