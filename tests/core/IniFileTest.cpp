#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/files/IniFile.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::core {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

class IniFile : public testing::Test {
protected:
    Lines read(std::string_view section) {
        error_ = -1;
        return ReadIniSection(folder_ / "a.ini", section, error_);
    }
    void setContent(std::string_view content) { folder_.write("a.ini", content); }
    [[nodiscard]] std::string content() const { return folder_.read("a.ini"); }
    [[nodiscard]] IniStatus write(std::string_view section, const Lines& lines) const {
        return WriteIniSection(folder_ / "a.ini", section, lines);
    }

    support::TempFolder folder_;
    std::int16_t error_ = -1;
};

TEST_F(IniFile, AMissingFileIsError1AndOneEmptyLine) {
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 1);
}

TEST_F(IniFile, AMissingSectionIsError2AndOneEmptyLine) {
    setContent("[Par1]\r\nRPM\r\n");
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 2);
}

TEST_F(IniFile, ASectionEndsAtTheNextHeaderOrTheEndOfTheFile) {
    setContent("[Par0]\r\nRPM\r\nEngine speed\r\n[Par1]\r\nTempW\r\nWater");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM", "Engine speed"));
    EXPECT_EQ(error_, 0);
    EXPECT_THAT(read("Par1"), ElementsAre("TempW", "Water"));
}

TEST_F(IniFile, BracketsAndBlanksAroundTheNameMayBeLeftOut) {
    setContent("[Par0]\nRPM\n");
    EXPECT_THAT(read(" [Par0] "), ElementsAre("RPM"));
    EXPECT_THAT(read("[Par0"), ElementsAre("RPM"));
    EXPECT_THAT(read("Par0]"), ElementsAre("RPM"));
}

TEST_F(IniFile, BlanksAroundThePathAreLeftOut) {
    setContent("[Par0]\nRPM\n");
    const fs::path padded = "  " + (folder_ / "a.ini").string() + " ";
    EXPECT_THAT(ReadIniSection(padded, "Par0", error_), ElementsAre("RPM"));
}

TEST_F(IniFile, FindsAHeaderInAnotherCase) {
    setContent("[pAR0]\nRPM\n[S\xC3\x84\xC3\x84T\xC3\x96]\n1\n");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM"));
    EXPECT_THAT(read("s\xC3\xA4\xC3\xA4t\xC3\xB6"), ElementsAre("1"));
}

TEST_F(IniFile, ALineThatGoesOnBehindTheHeaderStillOpensTheSection) {
    setContent("  [Par0] of the engine\nRPM\n");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM"));
}

TEST_F(IniFile, Par1IsNotPar10) {
    setContent("[Par10]\nten\n[Par1]\none\n");
    EXPECT_THAT(read("Par1"), ElementsAre("one"));
}

TEST_F(IniFile, DropsCommentsAndEmptyLines) {
    setContent("[Par0]\n; first\n\nRPM\n   \n  ; second\nabc ; note\n;[Par9]\nlast;\n; trailing\n;\n");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM", "abc", "last"));
}

TEST_F(IniFile, AHeaderInACommentIsNoHeader) {
    setContent("; [Par0]\nRPM\n");
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 2);
}

TEST_F(IniFile, ASectionWithoutLinesIsEmptyAndNoError) {
    setContent("[Par0]\n; nothing\n[Par1]\n");
    EXPECT_THAT(read("Par0"), IsEmpty());
    EXPECT_EQ(error_, 0);
    EXPECT_THAT(read("Par1"), IsEmpty());
    EXPECT_EQ(error_, 0);
}

TEST_F(IniFile, OfTwoSectionsWithOneNameTheFirstCounts) {
    setContent("[Par0]\none\n[Par0]\ntwo\n");
    EXPECT_THAT(read("Par0"), ElementsAre("one"));
}

TEST_F(IniFile, ReadsAFileOfAnOlderMachine) {
    setContent(
        "[Par1]\r\nVesi \xB0"
        "C\r\nL\xE4mp\xF6\r\n");
    EXPECT_THAT(read("Par1"), ElementsAre("Vesi \xC2\xB0"
                                          "C",
                                          "L\xC3\xA4mp\xC3\xB6"));
}

TEST_F(IniFile, AByteOrderMarkDoesNotHideTheFirstHeader) {
    setContent("\xEF\xBB\xBF[Par0]\nRPM\n");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM"));
}

TEST_F(IniFile, WhatIsWrittenBehindSeveralByteOrderMarksIsReadBack) {
    setContent("\xEF\xBB\xBF\xEF\xBB\xBF[Par0]\nRPM\n");
    EXPECT_THAT(read("Par0"), ElementsAre("RPM"));
    EXPECT_EQ(write("Par0", {"Load"}), IniStatus::Done);
    EXPECT_THAT(read("Par0"), ElementsAre("Load"));
}

TEST_F(IniFile, AFolderInThePlaceOfTheFileIsAMissingFile) {
    fs::create_directory(folder_ / "a.ini");
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 1);
}

TEST_F(IniFile, AFileTooLargeToBeOneHasNoSections) {
    setContent("[Par0]\nRPM\n" + std::string((1U << 20U) - 11, ';'));
    EXPECT_THAT(read("Par0"), ElementsAre("RPM"));
    setContent("[Par0]\nRPM\n" + std::string((1U << 20U) - 10, ';'));
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 2);
    EXPECT_EQ(write("Par0", {"new"}), IniStatus::CannotOpen);
    EXPECT_EQ(fs::file_size(folder_ / "a.ini"), (1U << 20U) + 1);
}

TEST_F(IniFile, BinaryRubbishIsReadWithoutHarm) {
    std::string rubbish = "[Par0]\n";
    for (int i = 0; i < 5000; ++i) {
        rubbish += static_cast<char>(i * 37);
    }
    setContent(rubbish);
    static_cast<void>(read("Par0"));
    EXPECT_EQ(error_, 0);
    setContent(std::string(1 << 20, '['));
    static_cast<void>(read("Par0"));
    EXPECT_EQ(error_, 2);
}

TEST_F(IniFile, ANewFileBeginsWithAnEmptyLine) {
    EXPECT_EQ(write("Par0", {"RPM", "Speed"}), IniStatus::Done);
    EXPECT_EQ(content(), "\r\n[Par0]\r\nRPM\r\nSpeed\r\n");
}

TEST_F(IniFile, AMissingSectionComesAtTheEndBehindAnEmptyLine) {
    setContent("; my file\r\n[Par0]\r\nRPM");
    EXPECT_EQ(write("Par1", {"TempW"}), IniStatus::Done);
    EXPECT_EQ(content(), "; my file\r\n[Par0]\r\nRPM\r\n\r\n[Par1]\r\nTempW\r\n");
}

TEST_F(IniFile, AnExistingSectionIsReplacedWithItsComments) {
    setContent("[Par0]\r\nold\r\n; note\r\nolder\r\n  [Par1]\r\n  TempW\r\n");
    EXPECT_EQ(write("par0", {"new"}), IniStatus::Done);
    EXPECT_EQ(content(), "[Par0]\r\nnew\r\n\r\n[Par1]\r\nTempW\r\n");
}

TEST_F(IniFile, AHeaderThatGoesOnIsNotTheOneThatIsReplaced) {
    setContent("[Par0] of the engine\r\nold\r\n");
    EXPECT_EQ(write("Par0", {"new"}), IniStatus::Done);
    EXPECT_EQ(content(), "[Par0] of the engine\r\nold\r\n\r\n[Par0]\r\nnew\r\n");
}

TEST_F(IniFile, EachSectionOfThatNameIsReplaced) {
    setContent("[Par0]\r\none\r\n[Par0]\r\ntwo\r\n");
    EXPECT_EQ(write("Par0", {"new"}), IniStatus::Done);
    EXPECT_EQ(content(), "[Par0]\r\nnew\r\n[Par0]\r\nnew\r\n");
}

TEST_F(IniFile, WritingTwiceLeavesOneSectionWithTheNewLines) {
    EXPECT_EQ(write("Par0", {"one", "two"}), IniStatus::Done);
    EXPECT_EQ(write("Par0", {"three"}), IniStatus::Done);
    EXPECT_EQ(content(), "\r\n[Par0]\r\nthree\r\n");
    EXPECT_THAT(read("Par0"), ElementsAre("three"));
}

TEST_F(IniFile, AFileOfAnOlderMachineBecomesUtf8AsAWhole) {
    setContent("[Par1]\r\nL\xE4mp\xF6\r\n");
    EXPECT_EQ(write("Par2", {"\xC3\x84\xC3\xA4ni"}), IniStatus::Done);
    EXPECT_THAT(read("Par1"), ElementsAre("L\xC3\xA4mp\xC3\xB6"));
    EXPECT_THAT(read("Par2"), ElementsAre("\xC3\x84\xC3\xA4ni"));
}

TEST_F(IniFile, NoArrayAndNoLinesHaveStatusesOfTheirOwn) {
    EXPECT_EQ(WriteIniSection(folder_ / "a.ini", "Par0", std::nullopt), IniStatus::NoArray);
    EXPECT_EQ(static_cast<int>(IniStatus::NoArray), 1);
    EXPECT_EQ(write("Par0", {}), IniStatus::NoLines);
    EXPECT_EQ(static_cast<int>(IniStatus::NoLines), 2);
    EXPECT_FALSE(folder_.has("a.ini"));
}

TEST_F(IniFile, AFileThatCannotBeOpenedIsStatus3) {
    EXPECT_EQ(WriteIniSection(folder_ / "missing" / "a.ini", "Par0", Lines{"RPM"}), IniStatus::CannotOpen);
    EXPECT_EQ(static_cast<int>(IniStatus::CannotOpen), 3);
    fs::create_directory(folder_ / "a.ini");
    EXPECT_EQ(write("Par0", {"RPM"}), IniStatus::CannotOpen);
}

TEST_F(IniFile, AReadOnlyFileIsStatus4AndStays) {
    setContent("[Par0]\nRPM\n");
    fs::permissions(folder_ / "a.ini", fs::perms::owner_read);
    EXPECT_EQ(write("Par0", {"new"}), IniStatus::CopyFailed);
    EXPECT_EQ(static_cast<int>(IniStatus::CopyFailed), 4);
    EXPECT_EQ(content(), "[Par0]\nRPM\n");
    EXPECT_THAT(folder_.names(), ElementsAre("a.ini"));
}

TEST_F(IniFile, AFullDiskIsStatus4AndTheOldFileStaysWhole) {
    const std::string old = "[Par0]\n" + std::string(3000, 'x') + "\n";
    setContent(old);
    {
        const support::FileSizeLimit full(1000);
        EXPECT_EQ(write("Par1", {"TempW"}), IniStatus::CopyFailed);
    }
    EXPECT_EQ(content(), old);
    EXPECT_THAT(folder_.names(), ElementsAre("a.ini"));
}

TEST_F(IniFile, LeavesNothingBehindInTheTemporaryFolder) {
    support::TempFolder temporary;
    const std::string old = fs::temp_directory_path().string();
    setenv("TMPDIR", temporary.path().c_str(), 1);
    EXPECT_EQ(write("Par0", {"RPM"}), IniStatus::Done);
    EXPECT_EQ(TempFileName().parent_path(), temporary.path());
    setenv("TMPDIR", old.c_str(), 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(IniFile, NeedsNoTemporaryFolder) {
    const std::string old = fs::temp_directory_path().string();
    setContent("[Par0]\nRPM\n");
    setenv("TMPDIR", (folder_ / "missing").c_str(), 1);
    EXPECT_EQ(write("Par0", {"new"}), IniStatus::Done);
    EXPECT_EQ(TempFileName(), fs::path());
    setenv("TMPDIR", old.c_str(), 1);
    EXPECT_EQ(content(), "[Par0]\r\nnew\r\n");
}

TEST_F(IniFile, AFullDiskIsStatus4AndLeavesNoBeginningOfANewFile) {
    {
        const support::FileSizeLimit full(1000);
        EXPECT_EQ(write("Par1", {std::string(2000, 'x')}), IniStatus::CopyFailed);
    }
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(IniFile, APipeIsStatus3AndNobodyWaitsForIt) {
    ASSERT_EQ(mkfifo((folder_ / "a.ini").c_str(), 0600), 0);
    EXPECT_EQ(write("Par0", {"RPM"}), IniStatus::CannotOpen);
    EXPECT_THAT(read("Par0"), ElementsAre(""));
    EXPECT_EQ(error_, 2);
}

TEST(KillFile, DeletesAReadOnlyFileAndMindsNoMissingOne) {
    const support::TempFolder folder;
    const auto file = folder.write("old", "x");
    fs::permissions(file, fs::perms::owner_read);
    KillFile(file);
    EXPECT_FALSE(folder.has("old"));
    KillFile(file);
    KillFile(folder.path());
    EXPECT_TRUE(fs::exists(folder.path()));
}

TEST(TempFileName, IsUnusedAndNeverTheSame) {
    EXPECT_FALSE(fs::exists(TempFileName()));
    EXPECT_NE(TempFileName(), TempFileName());
}

TEST(ComplementDigits, TurnsDigitsRoundAndBlanksMinusSigns) {
    EXPECT_EQ(ComplementDigits("-12.5"), " 87.4");
    EXPECT_EQ(ComplementDigits("0123456789"), "9876543210");
    EXPECT_EQ(ComplementDigits("a-b 0"), "a b 9");
    EXPECT_EQ(ComplementDigits(""), "");
}

}  // namespace
}  // namespace korvane::core
