#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <numeric>
#include <sys/stat.h>
#include <utility>

#include "SettingsBench.h"
#include "core/Numbers.h"
#include "core/files/SettingsFile.h"
#include "core/files/TextFile.h"
#include "core/tables/Module1.h"
#include "support/FileSizeLimit.h"

namespace korvane::core {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using SettingsFileWriting = SettingsBench;
using SettingsFileReading = SettingsBench;

// What a program writes whose fuel cells hold their index, whose ignition cells hold 200, and so on.
TEST_F(SettingsFileWriting, ASmallMapStandsByteForByte) {
    std::iota(tables_->FuelMapOut.begin(), tables_->FuelMapOut.end(), std::uint8_t{0});
    tables_->IgnMapOut.fill(200);
    tables_->PwmMapOut.fill(5);
    tables_->MiscBlock = {99, 1, 2, 3, 4, 5, 0, 128, 255, 6};
    tables_->EEParams[365].name = "MINTHR_OFF";
    EXPECT_EQ(saved(160),
              "Injection\r\n"
              " 0  1  2  3  4  5  6  7  8  9  10  11  12  13  14  15 \r\n"
              " 16  17  18  19  20  21  22  23  24  25  26  27  28  29  30  31 \r\n"
              " 32  33  34  35  36  37  38  39  40  41  42  43  44  45  46  47 \r\n"
              " 48  49  50  51  52  53  54  55  56  57  58  59  60  61  62  63 \r\n"
              " 64  65  66  67  68  69  70  71  72  73  74  75  76  77  78  79 \r\n"
              " 80  81  82  83  84  85  86  87  88  89  90  91  92  93  94  95 \r\n"
              " 96  97  98  99  100  101  102  103  104  105  106  107  108  109  110  111 \r\n"
              " 112  113  114  115  116  117  118  119  120  121  122  123  124  125  126  127 \r\n"
              " 128  129  130  131  132  133  134  135  136  137  138  139  140  141  142  143 \r\n"
              " 144  145  146  147  148  149  150  151  152  153  154  155  156  157  158  159 \r\n" +
                  smallMap("Ignition", "200") + "Misc\r\n 1  2  3  4  5  0  128  255  6 \r\n" + smallMap("PWM", "5") +
                  "PARAMS\r\n365#0##MINTHR_OFF\r\n");
}

TEST_F(SettingsFileWriting, ALargeMapHasLongHeadersAndLongLinesButASmallPwmTable) {
    tables_->FuelMapOut.fill(1);
    tables_->FuelMapOut[20] = 250;
    tables_->FuelMapOut[319] = 251;
    tables_->IgnMapOut.fill(2);
    tables_->PwmMapOut.fill(3);
    tables_->MiscBlock.fill(9);
    std::string fuel = largeMap("Injection", "1");
    const std::string row = table(1, 20, "1");
    fuel.replace(fuel.find("\r\n") + 2 + row.size(), 3, " 250 ");
    fuel.replace(fuel.size() - 5, 3, " 251 ");
    EXPECT_EQ(saved(320), fuel + largeMap("Ignition", "2") + "Misc\r\n 9  9  9  9  9  9  9  9  9 \r\n" +
                              smallMap("PWM", "3") + "PARAMS\r\n");
}

TEST_F(SettingsFileWriting, AnyOtherSizeBeginsWithMisc) {
    for (const std::int16_t size : std::initializer_list<std::int16_t>{0, 1, 159, 161, 319, 321, -160, 32767}) {
        EXPECT_THAT(saved(size), StartsWith("Misc\r\n")) << size;
    }
}

TEST_F(SettingsFileWriting, RowsAreWrittenForTheirNameOrTheirValueInRisingOrder) {
    tables_->EEParams[0].name = "never";
    tables_->EEParams[0].value = std::uint8_t{1};
    tables_->EEParams[3].value = std::int32_t{-70000};
    tables_->EEParams[1].name = "named";
    tables_->EEParams[2].name = "both";
    tables_->EEParams[2].value = std::uint8_t{0};
    tables_->EEParams[2].reserved = 4;
    tables_->EEParams[3000].value = std::int32_t{213};
    EXPECT_THAT(saved(160), EndsWith("PARAMS\r\n1#0##named\r\n2#4#0#both\r\n3#0#-70000#\r\n3000#0#213#\r\n"));
}

TEST_F(SettingsFileWriting, TheFirmwaresRowsStandWithVersionAndType) {
    InitParams(*tables_, 11);
    tables_->EEParams[2999].value = 3.386F;
    const std::string file = saved(160);
    EXPECT_THAT(file, EndsWith("\r\n1960#0##CYL_COUNT_OFF\r\n2999#0#3.386#SW_VER\r\n3000#0#11#SW_TYPE\r\n"));
    EXPECT_THAT(file, HasSubstr("\r\n512#0##LAUNCHCONTROL_HI\r\n513#0## IGNORDER_OFF\r\n514#0##"));
}

TEST_F(SettingsFileWriting, ANewFileReplacesALongerOne) {
    folder_.write("tune.txt", std::string(100000, 'x'));
    EXPECT_THAT(saved(160), Not(HasSubstr("x")));
}

TEST_F(SettingsFileWriting, APlaceThatCanNotBeWrittenIsTold) {
    SaveSettingsFile(folder_ / "missing" / "tune.txt", *tables_, 160, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error save: Path not found"));
    SaveSettingsFile(folder_.path(), *tables_, 160, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error save: Path/File access error"));
}

TEST_F(SettingsFileWriting, AFullDiskIsTold) {
    SaveSettingsFile("/dev/full", *tables_, 160, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error save: Disk full"));
}

TEST_F(SettingsFileWriting, APipeIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    SaveSettingsFile(folder_ / "pipe", *tables_, 160, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error save: Path/File access error"));
}

TEST_F(SettingsFileWriting, AFileThatFillsTheDiskStaysAsFarAsItCame) {
    const std::string whole = saved(160);
    folder_.write("tune.txt", "old");
    {
        const support::FileSizeLimit full(500);
        SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_);
    }
    EXPECT_THAT(texts(), ElementsAre("Error save: Disk full"));
    EXPECT_EQ(folder_.read("tune.txt"), whole.substr(0, 500));
}

TEST_F(SettingsFileWriting, AFileThatFillsTheDiskLeavesTheOlderOneBesideIt) {
    folder_.write("tune.txt", "old");
    std::filesystem::permissions(folder_ / "tune.txt",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    {
        const support::FileSizeLimit full(500);
        SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_);
        SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_);
    }
    EXPECT_THAT(texts(), ElementsAre("Error save: Disk full", "Error save: Disk full"));
    std::vector<std::string> aside;
    for (const auto& file : std::filesystem::directory_iterator(folder_.path())) {
        if (file.path() != folder_ / "tune.txt") {
            EXPECT_THAT(file.path().filename().string(), testing::MatchesRegex("tune\\.older-[0-9a-f]+\\.txt"));
            aside.push_back(folder_.read(file.path().filename().string()));
        }
    }
    EXPECT_THAT(aside, testing::Contains("old")) << "the one before the first failure";
}

// Whoever has the older file open, or a link to it, still has all of it.
TEST_F(SettingsFileWriting, TheOlderFileIsNotWrittenInto) {
    namespace fs = std::filesystem;
    folder_.write("old.txt", "old");
    fs::create_hard_link(folder_ / "old.txt", folder_ / "tune.txt");
    std::vector<fs::path> flushed;
    EXPECT_TRUE(SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_, [&](const fs::path& place) {
        flushed.push_back(place);
        return std::error_code();
    }));
    EXPECT_EQ(folder_.read("old.txt"), "old");
    EXPECT_THAT(folder_.read("tune.txt"), StartsWith("Injection\r\n"));
    EXPECT_THAT(flushed, testing::SizeIs(2)) << "the file and its folder";
}

TEST_F(SettingsFileWriting, PermissionsAndLinksStay) {
    namespace fs = std::filesystem;
    folder_.write("real.txt", "old");
    constexpr auto kOwn = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(folder_ / "real.txt", kOwn);
    fs::create_symlink("real.txt", folder_ / "tune.txt");
    EXPECT_TRUE(SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_));
    EXPECT_TRUE(fs::is_symlink(folder_ / "tune.txt"));
    EXPECT_THAT(folder_.read("real.txt"), StartsWith("Injection\r\n"));
    EXPECT_EQ(fs::status(folder_ / "real.txt").permissions(), kOwn);
}

TEST_F(SettingsFileWriting, AFileInAFolderThatTakesNoOtherIsWrittenInPlace) {
    namespace fs = std::filesystem;
    folder_.write("tune.txt", "old");
    fs::permissions(folder_.path(), fs::perms::owner_write, fs::perm_options::remove);
    const bool isBound = !std::ofstream(folder_ / "probe");
    EXPECT_TRUE(SaveSettingsFile(folder_ / "tune.txt", *tables_, 160, dialogs_));
    fs::permissions(folder_.path(), fs::perms::owner_write, fs::perm_options::add);
    if (!isBound) {
        GTEST_SKIP() << "permissions do not bind this user";
    }
    EXPECT_THAT(folder_.read("tune.txt"), StartsWith("Injection\r\n"));
    EXPECT_FALSE(folder_.has("probe"));
}

TEST_F(SettingsFileReading, AWholeFileFillsTheInTablesAndLeavesTheOutTables) {
    EXPECT_EQ(load(kTables), kSettingsRead);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 159), Each(11));
    EXPECT_THAT(cells(tables_->IgnMapIn, 0, 159), Each(22));
    EXPECT_THAT(cells(tables_->PwmMapIn, 0, 159), Each(44));
    EXPECT_THAT(misc(), ElementsAre(255, 1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(cells(tables_->FuelMapIn, 160, 319), Each(255));
    EXPECT_THAT(cells(tables_->IgnMapIn, 160, 319), Each(255));
    EXPECT_THAT(cells(tables_->PwmMapIn, 160, 319), Each(255));
    EXPECT_THAT(cells(tables_->FuelMapOut, 0, 319), Each(0));
    EXPECT_THAT(cells(tables_->IgnMapOut, 0, 319), Each(0));
    EXPECT_THAT(cells(tables_->PwmMapOut, 0, 319), Each(0));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(SettingsFileReading, CellsRunInRisingOrder) {
    std::string numbers;
    for (int cell = 0; cell < 160; ++cell) {
        numbers += ' ' + textOf(cell) + ' ';
    }
    EXPECT_EQ(load("Injection" + numbers), kSettingsNoIgnition);
    EXPECT_EQ(tables_->FuelMapIn[1], 1);
    EXPECT_EQ(tables_->FuelMapIn[17], 17);
    EXPECT_EQ(tables_->FuelMapIn[159], 159);
}

TEST_F(SettingsFileReading, TheTwoMapsMayHaveDifferentSizes) {
    EXPECT_EQ(load(kFuel + largeMap("Ignition", "33") + kMisc + kPwm), kSettingsRead);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 159), Each(11));
    EXPECT_THAT(cells(tables_->FuelMapIn, 160, 319), Each(255));
    EXPECT_THAT(cells(tables_->IgnMapIn, 0, 319), Each(33));

    tables_->IgnMapIn.fill(255);
    EXPECT_EQ(load(largeMap("Injection", "66") + kIgnition + kMisc + kPwm), kSettingsRead);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 319), Each(66));
    EXPECT_THAT(cells(tables_->IgnMapIn, 0, 159), Each(22));
    EXPECT_THAT(cells(tables_->IgnMapIn, 160, 319), Each(255));
}

TEST_F(SettingsFileReading, AFileWithoutAWordIsEmpty) {
    EXPECT_EQ(load(""), kSettingsEmpty);
    EXPECT_EQ(load(" \r\n , \n\r  "), kSettingsEmpty);
    EXPECT_EQ(load("\xEF\xBB\xBF"), kSettingsEmpty);
}

TEST_F(SettingsFileReading, AnotherFirstWordIsNoSettingsFile) {
    EXPECT_EQ(load("Ignition\r\n"), kSettingsNoFuelHeader);
    EXPECT_EQ(load("injection\r\n"), kSettingsNoFuelHeader);
    EXPECT_EQ(load("Injection_160\r\n"), kSettingsNoFuelHeader);
    EXPECT_EQ(load("Injection\t1"), kSettingsNoFuelHeader);
    EXPECT_EQ(load("Misc\r\n"), kSettingsNoFuelHeader);
    EXPECT_EQ(load("\x89PNG\r\n\x1A\n"), kSettingsNoFuelHeader);
    EXPECT_EQ(load(std::string(100000, '\0')), kSettingsNoFuelHeader);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 319), Each(255));
}

TEST_F(SettingsFileReading, AFileThatEndsBetweenItsSectionsGivesTheSectionThatIsMissing) {
    EXPECT_EQ(load(kFuel), kSettingsNoIgnition);
    EXPECT_EQ(load(kFuel + kIgnition), kSettingsNoMisc);
    EXPECT_EQ(load(kFuel + kIgnition + kMisc), kSettingsOldType);
}

TEST_F(SettingsFileReading, AnotherSectionInThePlaceGivesTheCheckThatFailed) {
    EXPECT_EQ(load(kFuel + kMisc), kSettingsWrongIgnition);
    EXPECT_EQ(load(kFuel + "Ignition_160\r\n"), kSettingsWrongIgnition);
    EXPECT_EQ(load(kFuel + kIgnition + kPwm), kSettingsWrongMisc);
    EXPECT_EQ(load(kFuel + kIgnition + kMisc + "PARAMS\r\n"), kSettingsNoPwm);
}

TEST_F(SettingsFileReading, ALargeTableUnderAShortHeaderIsFollowedByNoHeader) {
    EXPECT_EQ(load("Injection\r\n" + table(16, 20, "1")), kSettingsWrongIgnition);
}

TEST_F(SettingsFileReading, AnOlderFileEndsAfterMiscAndHasItsMapsRead) {
    EXPECT_EQ(load(kFuel + kIgnition + kMisc), kSettingsOldType);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 159), Each(11));
    EXPECT_THAT(cells(tables_->IgnMapIn, 0, 159), Each(22));
    EXPECT_THAT(misc(), ElementsAre(255, 1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(cells(tables_->PwmMapIn, 0, 319), Each(255));
}

TEST_F(SettingsFileReading, ATableThatEndsTooSoonGivesItsPhaseAndKeepsWhatWasRead) {
    EXPECT_EQ(load("Injection\r\n 1  2  3"), kSettingsBadFuel);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 3), ElementsAre(1, 2, 3, 255));
    EXPECT_EQ(load(kFuel + "Ignition_320\r\n" + table(15, 20, "5")), kSettingsBadIgnition);
    EXPECT_THAT(cells(tables_->IgnMapIn, 0, 299), Each(5));
    EXPECT_THAT(cells(tables_->IgnMapIn, 300, 319), Each(255));
    EXPECT_EQ(load(kFuel + kIgnition + "Misc\r\n 8  7 "), kSettingsBadMisc);
    EXPECT_THAT(misc(), ElementsAre(255, 8, 7, 255, 255, 255, 255, 255, 255, 255));
    EXPECT_EQ(load(kFuel + kIgnition + kMisc + "PWM\r\n 6 "), kSettingsBadPwm);
    EXPECT_THAT(cells(tables_->PwmMapIn, 0, 1), ElementsAre(6, 255));
}

TEST_F(SettingsFileReading, AWordThatIsNoByteEndsTheTableThere) {
    for (const std::string word :
         {"256", "-1", "abc", "1x", "1.5", "1e2", "0x10", "#", "1\t2", "99999999999999999999", "Ignition"}) {
        tables_->FuelMapIn.fill(255);
        EXPECT_EQ(load("Injection\r\n 1  " + word + "  3 "), kSettingsBadFuel) << word;
        EXPECT_THAT(cells(tables_->FuelMapIn, 0, 2), ElementsAre(1, 255, 255)) << word;
    }
}

TEST_F(SettingsFileReading, AWordOfMillionsOfDigitsIsNoByteEither) {
    EXPECT_EQ(load("Injection " + std::string(4000000, '9')), kSettingsBadFuel);
    EXPECT_EQ(load("Injection " + std::string(4000000, '0') + "7"), kSettingsBadFuel);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 1), ElementsAre(7, 255));
}

TEST_F(SettingsFileReading, EachTablesFaultHasItsOwnStatus) {
    EXPECT_EQ(load(kFuel + "Ignition 300"), kSettingsBadIgnition);
    EXPECT_EQ(load(kFuel + kIgnition + "Misc 300"), kSettingsBadMisc);
    EXPECT_EQ(load(kFuel + kIgnition + kMisc + "PWM 300"), kSettingsBadPwm);
}

TEST_F(SettingsFileReading, AWordEndsAtABlankACommaOrAnyLineEnd) {
    EXPECT_EQ(load("Injection\r1,2\n3 4\r\n5 , 6,\r\n\r\n7,,8"), kSettingsBadFuel);
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 8), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 255));
}

TEST_F(SettingsFileReading, LineBreaksCarryNoMeaning) {
    std::string one = kTables;
    std::replace(one.begin(), one.end(), '\r', ' ');
    std::replace(one.begin(), one.end(), '\n', ' ');
    EXPECT_EQ(load(one), kSettingsRead);
    std::string many = kTables;
    std::replace(many.begin(), many.end(), ' ', '\n');
    EXPECT_EQ(load(many), kSettingsRead);
    EXPECT_THAT(cells(tables_->PwmMapIn, 0, 159), Each(44));
}

TEST_F(SettingsFileReading, AByteOrderMarkAndOlderEncodingsStandInNobodysWay) {
    EXPECT_EQ(load("\xEF\xBB\xBF" + kTables), kSettingsRead);
    EXPECT_EQ(load(kTables + "PARAMS\r\n513#0#1#s\xE4\xE4t\xF6\r\n"), kSettingsRead);
}

TEST_F(SettingsFileReading, AFileThatCanNotBeReadRaisesItsError) {
    const auto numberFor = [this](const std::filesystem::path& path) {
        try {
            static_cast<void>(LoadSettingsFile(path, *tables_, nullptr, dialogs_));
        } catch (const platform::RuntimeError& failure) {
            return failure.number();
        }
        return 0;
    };
    EXPECT_EQ(numberFor(folder_ / "missing.txt"), kErrorFileNotFound);
    EXPECT_EQ(numberFor(folder_.path()), kErrorPathFileAccess);
    EXPECT_EQ(numberFor(folder_.write("large.txt", kTables + std::string(kLargestTextFile, ' '))),
              kErrorPathFileAccess);
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_THAT(cells(tables_->FuelMapIn, 0, 319), Each(255));
}

TEST_F(SettingsFileReading, WhatTheProgramWroteComesBackToTheSameTables) {
    for (const std::int16_t size : std::initializer_list<std::int16_t>{160, 320}) {
        InitParams(*tables_, 14);
        for (std::size_t i = 0; i < kMapSize; ++i) {
            tables_->FuelMapOut[i] = static_cast<std::uint8_t>(i * 7);
            tables_->IgnMapOut[i] = static_cast<std::uint8_t>(255 - i);
            tables_->PwmMapOut[i] = static_cast<std::uint8_t>(i * 3);
        }
        tables_->MiscBlock = {255, 9, 8, 7, 6, 5, 4, 3, 2, 0};
        const std::string file = saved(size);
        tables_->MiscBlock.fill(0);
        EXPECT_EQ(load(file), kSettingsRead);
        const auto last = static_cast<std::size_t>(size) - 1;
        EXPECT_EQ(cells(tables_->FuelMapIn, 0, last), cells(tables_->FuelMapOut, 0, last));
        EXPECT_EQ(cells(tables_->IgnMapIn, 0, last), cells(tables_->IgnMapOut, 0, last));
        EXPECT_EQ(cells(tables_->PwmMapIn, 0, 159), cells(tables_->PwmMapOut, 0, 159));
        EXPECT_THAT(cells(tables_->PwmMapIn, 160, 319), Each(255));
        EXPECT_THAT(misc(), ElementsAre(0, 9, 8, 7, 6, 5, 4, 3, 2, 0));
        EXPECT_EQ(saved(size), file);
    }
}

TEST_F(SettingsFileReading, SaysHowManyCellsEachTableHas) {
    const auto sizes = [this](const std::string& content) {
        SettingsSizes found;
        static_cast<void>(LoadSettingsFile(folder_.write("tune.txt", content), *tables_, nullptr, dialogs_, found));
        return std::vector{found.fuel, found.ignition, found.pwm};
    };
    EXPECT_THAT(sizes(kTables), ElementsAre(160, 160, 160));
    EXPECT_THAT(sizes(largeMap("Injection", "1") + kIgnition + kMisc), ElementsAre(320, 160, 0));
    EXPECT_THAT(sizes(kFuel + "Ignition\r\n 1  2 "), ElementsAre(160, 0, 0));
}

TEST_F(SettingsFileReading, WithoutASinkParametersAreNotLookedAt) {
    EXPECT_EQ(load(kTables + "nonsense"), kSettingsRead);
    EXPECT_THAT(texts(), IsEmpty());
}

TEST(SettingsStatus, EachStatusHasItsNumberAndItsText) {
    const std::vector<std::pair<int, std::string>> expected = {
        {0, ""},
        {1, "Empty file"},
        {2, "Not valid settings file"},
        {3, "3"},
        {4, "4"},
        {5, "5"},
        {6, "6"},
        {7, " Opened old type setting file, Inj & Ign tables loaded"},
        {8, " No PWM table, Inj & Ign tables loaded"},
        {11, "Not valid settings file"},
        {12, "12"},
        {13, "13"},
        {14, "14"},
    };
    for (const auto& [status, text] : expected) {
        EXPECT_EQ(settingsStatusText(status), text) << status;
    }
    EXPECT_THAT(
        (std::vector{kSettingsRead, kSettingsEmpty, kSettingsNoFuelHeader, kSettingsNoIgnition, kSettingsWrongIgnition,
                     kSettingsNoMisc, kSettingsWrongMisc, kSettingsOldType, kSettingsNoPwm, kSettingsBadFuel,
                     kSettingsBadIgnition, kSettingsBadMisc, kSettingsBadPwm}),
        ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14));
}

}  // namespace
}  // namespace korvane::core
