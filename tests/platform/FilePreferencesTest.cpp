#include <gmock/gmock.h>

#include "platform/FilePreferences.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr const char* kKey = "Software\\KorvaneTuner\\Settings";
constexpr const char* kFile = "preferences.ini";

class FilePreferencesTest : public testing::Test {
protected:
    FilePreferences open() { return FilePreferences(folder_ / kFile); }
    FilePreferences open(std::string_view content) {
        folder_.write(kFile, content);
        return open();
    }
    [[nodiscard]] std::string content() const { return folder_.read(kFile); }

    support::TempFolder folder_;
};

TEST_F(FilePreferencesTest, ReadsTextsUnderTheirKeys) {
    const auto preferences = open("[Software\\KorvaneTuner\\Settings]\nPort=2\n[Ports]\nCOM3=/dev/ttyUSB0\n");
    EXPECT_EQ(preferences.read(kKey, "Port"), "2");
    EXPECT_EQ(preferences.read("Ports", "COM3"), "/dev/ttyUSB0");
    EXPECT_FALSE(preferences.read("Ports", "Port"));
    EXPECT_FALSE(preferences.read(kKey, "COM3"));
    EXPECT_FALSE(preferences.read("Other", "Port"));
}

TEST_F(FilePreferencesTest, SeveralByteOrderMarksDoNotHideTheFirstHeader) {
    const auto preferences = open("\xEF\xBB\xBF\xEF\xBB\xBF[Ports]\nCOM3=/dev/a\n");
    EXPECT_EQ(preferences.read("Ports", "COM3"), "/dev/a");
}

TEST_F(FilePreferencesTest, ReadsWhatAPersonTypes) {
    const auto preferences = open(
        "\xEF\xBB\xBF; mine\r\n  [ ports ]\r\n# the left socket\r\n  com3 = /dev/a=b ; c \r\nCOM4=\"  x \"\r\n"
        "COM5=\r\nCOM6\r\n#COM7=1\r\n");
    EXPECT_EQ(preferences.read("Ports", "COM3"), "/dev/a=b ; c");
    EXPECT_EQ(preferences.read("Ports", "COM4"), "  x ");
    EXPECT_EQ(preferences.read("Ports", "COM5"), "");
    EXPECT_FALSE(preferences.read("Ports", "COM6"));
    EXPECT_FALSE(preferences.read("Ports", "#COM7"));
}

TEST_F(FilePreferencesTest, WrittenForThisRunStayOutOfTheFile) {
    folder_.write(kFile, "[A]\nB=1\n");
    FilePreferences preferences(folder_ / kFile, FilePreferences::Writes::ForThisRun);
    preferences.write("A", "B", "2");
    preferences.write("A", "C", "3");
    EXPECT_EQ(preferences.read("A", "B"), "2");
    EXPECT_EQ(preferences.read("A", "C"), "3");
    EXPECT_EQ(content(), "[A]\nB=1\n");
}

TEST_F(FilePreferencesTest, OfTwoLinesWithOneNameTheFirstCounts) {
    EXPECT_EQ(open("[Ports]\nCOM1=a\nCOM1=b\n[Ports]\nCOM1=c\n").read("Ports", "COM1"), "a");
}

TEST_F(FilePreferencesTest, AMissingFileIsEmptyAndIsNotMade) {
    EXPECT_FALSE(open().read(kKey, "Port"));
    EXPECT_FALSE(folder_.has(kFile));
}

TEST_F(FilePreferencesTest, WhatIsNoTextIsEmpty) {
    EXPECT_FALSE(open(std::string_view("[A]\nB=1\n\0", 9)).read("A", "B"));
    EXPECT_FALSE(open("[A]\nB=1\n\x01").read("A", "B"));
}

TEST_F(FilePreferencesTest, AHugeFileIsEmpty) {
    EXPECT_EQ(open("[A]\nB=1\n" + std::string((1U << 20U) - 8, ';')).read("A", "B"), "1");
    EXPECT_FALSE(open("[A]\nB=1\n" + std::string((1U << 20U) - 7, ';')).read("A", "B"));
}

TEST_F(FilePreferencesTest, AFolderInItsPlaceIsEmpty) {
    fs::create_directory(folder_ / kFile);
    auto preferences = open();
    preferences.write("A", "B", "1");
    EXPECT_EQ(preferences.read("A", "B"), "1");
    EXPECT_TRUE(fs::is_directory(folder_ / kFile));
}

TEST_F(FilePreferencesTest, ADeviceInItsPlaceIsEmptyAndStays) {
    FilePreferences preferences("/dev/null");
    preferences.write("A", "B", "1");
    EXPECT_EQ(preferences.read("A", "B"), "1");
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));
}

TEST_F(FilePreferencesTest, MakesTheFileAndItsFolder) {
    FilePreferences preferences(folder_ / "new" / "deeper" / kFile);
    preferences.write(kKey, "Port", "2");
    EXPECT_EQ(folder_.read("new/deeper/preferences.ini"), "[Software\\KorvaneTuner\\Settings]\nPort=2\n");
}

TEST_F(FilePreferencesTest, AValueIsThereAtOnceAndInTheNextRun) {
    auto preferences = open();
    preferences.write(kKey, "Port", "2");
    preferences.write(kKey, "Speed", "4");
    preferences.write(kKey, "Port", "7");
    EXPECT_EQ(preferences.read(kKey, "Port"), "7");
    EXPECT_EQ(open().read(kKey, "Port"), "7");
    EXPECT_EQ(content(), "[Software\\KorvaneTuner\\Settings]\nPort=7\nSpeed=4\n");
}

TEST_F(FilePreferencesTest, KeepsCommentsUnknownLinesAndTheirOrder) {
    auto preferences = open("; mine\n\n[Ports]\n# left\nCOM3=/dev/ttyUSB0\n???\n\n[Other]\nx=1\n");
    preferences.write("Ports", "COM4", "/dev/ttyUSB1");
    preferences.write("other", "X", "2");
    EXPECT_EQ(content(), "; mine\n\n[Ports]\n# left\nCOM3=/dev/ttyUSB0\n???\nCOM4=/dev/ttyUSB1\n\n[Other]\nX=2\n");
}

TEST_F(FilePreferencesTest, ANewKeyComesAtTheEnd) {
    open("[Ports]\nCOM3=a").write(kKey, "Port", "2");
    EXPECT_EQ(content(), "[Ports]\nCOM3=a\n\n[Software\\KorvaneTuner\\Settings]\nPort=2\n");
}

TEST_F(FilePreferencesTest, KeepsWhatAUserWroteMeanwhile) {
    auto preferences = open("[Ports]\nCOM3=a\n");
    preferences.write(kKey, "Port", "2");
    folder_.write(kFile, "[Ports]\nCOM3=b\n");
    preferences.write(kKey, "Speed", "4");
    EXPECT_EQ(content(), "[Ports]\nCOM3=b\n\n[Software\\KorvaneTuner\\Settings]\nPort=2\nSpeed=4\n");
    EXPECT_EQ(preferences.read("Ports", "COM3"), "b");
}

TEST_F(FilePreferencesTest, KeepsBytesThatAreNoUtf8) {
    auto preferences = open("; p\xE4\xE4\n[A]\nFile=/tmp/\xE4\n");
    preferences.write("A", "B", "1");
    EXPECT_EQ(content(), "; p\xE4\xE4\n[A]\nFile=/tmp/\xE4\nB=1\n");
    EXPECT_EQ(preferences.read("A", "File"), "/tmp/\xE4");
}

TEST_F(FilePreferencesTest, AnyOneLineTextComesBackAsItWas) {
    for (const std::string text :
         {"", " ", " a ", "\"", "\"\"", "\"a\"", "a\"", "=", "[x]", "; c", "\tx", "\xC3\xA4"}) {
        open().write("A", "B", text);
        EXPECT_EQ(open().read("A", "B"), text);
    }
}

TEST_F(FilePreferencesTest, ATextEndsAtItsFirstLineBreakOrControlCharacter) {
    open().write("A", "B", "one\n[C]\nD=2");
    EXPECT_EQ(content(), "[A]\nB=one\n");
    open().write("A", "B", std::string_view("t\0wo", 4));
    EXPECT_EQ(content(), "[A]\nB=t\n");
    open().write("A", "B", "x\x01y");
    EXPECT_EQ(open().read("A", "B"), "x");
}

TEST_F(FilePreferencesTest, ADamagedFileIsKeptBesideTheNewOne) {
    const std::string damaged("[A]\nB=1\n\0\0", 10);
    auto preferences = open(damaged);
    EXPECT_THAT(folder_.names(), ElementsAre(kFile));
    preferences.write("A", "C", "2");
    EXPECT_EQ(content(), "[A]\nC=2\n");
    EXPECT_EQ(folder_.read("preferences.ini.damaged"), damaged);
}

TEST_F(FilePreferencesTest, ASecondDamagedFileDoesNotReplaceTheFirst) {
    open(std::string(3, '\0')).write("A", "B", "1");
    open(std::string(5, '\0')).write("A", "B", "2");
    EXPECT_EQ(folder_.read("preferences.ini.damaged"), std::string(3, '\0'));
    EXPECT_EQ(content(), "[A]\nB=2\n");
    EXPECT_EQ(folder_.names().size(), 3U);
}

TEST_F(FilePreferencesTest, AHugeFileIsKeptBesideTheNewOne) {
    open(std::string((1U << 20U) + 1, 'x')).write("A", "C", "2");
    EXPECT_EQ(content(), "[A]\nC=2\n");
    EXPECT_EQ(fs::file_size(folder_ / "preferences.ini.damaged"), (1U << 20U) + 1);
}

TEST_F(FilePreferencesTest, AFileDamagedMeanwhileLosesNoValue) {
    auto preferences = open("[A]\nB=1\n");
    folder_.write(kFile, std::string(10, '\0'));
    preferences.write("A", "C", "2");
    EXPECT_EQ(content(), "[A]\nB=1\nC=2\n");
    EXPECT_TRUE(folder_.has("preferences.ini.damaged"));
}

TEST_F(FilePreferencesTest, AFullDiskLeavesTheFileWholeAndTheValueForThisRun) {
    auto preferences = open("[A]\nB=1\n");
    {
        const support::FileSizeLimit full(10);
        preferences.write("A", "B", "a longer text");
    }
    EXPECT_EQ(content(), "[A]\nB=1\n");
    EXPECT_EQ(preferences.read("A", "B"), "a longer text");
    EXPECT_THAT(folder_.names(), ElementsAre(kFile));
    // When the disk has space again, the next write stores both.
    preferences.write("A", "C", "2");
    EXPECT_EQ(content(), "[A]\nB=a longer text\nC=2\n");
}

TEST_F(FilePreferencesTest, AReadOnlyFileStays) {
    auto preferences = open("[A]\nB=1\n");
    fs::permissions(folder_ / kFile, fs::perms::owner_read);
    preferences.write("A", "B", "2");
    EXPECT_EQ(content(), "[A]\nB=1\n");
    EXPECT_EQ(preferences.read("A", "B"), "2");
}

TEST_F(FilePreferencesTest, AFolderThatCannotBeMadeIsPassedOver) {
    folder_.write("file", "");
    FilePreferences preferences(folder_ / "file" / kFile);
    preferences.write("A", "B", "1");
    EXPECT_EQ(preferences.read("A", "B"), "1");
}

}  // namespace
}  // namespace korvane::platform
