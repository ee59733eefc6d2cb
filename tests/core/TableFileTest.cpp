#include <array>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/files/AppendText.h"
#include "core/files/TableFile.h"
#include "core/files/TextFile.h"
#include "platform/QueuedDialogs.h"
#include "support/ErrorOf.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::core {
namespace {

using support::errorOf;
using testing::ElementsAre;
using testing::IsEmpty;

class TableFile : public testing::Test {
protected:
    std::vector<std::string> texts() {
        std::vector<std::string> texts;
        for (const auto& message : dialogs_.takeMessages()) {
            texts.push_back(message.text);
        }
        return texts;
    }

    support::TempFolder folder_;
    platform::QueuedDialogs dialogs_;
};

TEST_F(TableFile, BytesStandBetweenBlanksAndTheLastElementIsLeftOut) {
    const std::array<std::uint8_t, 4> bytes = {0, 7, 255, 99};
    SaveByteTable(folder_ / "table.txt", bytes, dialogs_);
    EXPECT_EQ(folder_.read("table.txt"), " 0 \r\n 7 \r\n 255 \r\n");
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(TableFile, TextsStandAsTheyAreAndTheLastElementIsLeftOut) {
    const std::array<std::string, 3> lines = {" 14.7 ", "12", "left out"};
    SaveTextTable(folder_ / "table.lam", lines, dialogs_);
    EXPECT_EQ(folder_.read("table.lam"), " 14.7 \r\n12\r\n");
}

TEST_F(TableFile, SavingReplacesAnOldFile) {
    folder_.write("table.txt", "a long old content");
    SaveByteTable(folder_ / "table.txt", std::array<std::uint8_t, 2>{1, 2}, dialogs_);
    EXPECT_EQ(folder_.read("table.txt"), " 1 \r\n");
}

TEST_F(TableFile, AnEmptyTableMakesAnEmptyFile) {
    SaveByteTable(folder_ / "none.txt", {}, dialogs_);
    EXPECT_EQ(folder_.read("none.txt"), "");
}

TEST_F(TableFile, AFailedSaveTellsWhy) {
    const std::array<std::string, 2> lines = {"1", ""};
    SaveTextTable(folder_ / "missing" / "table.lam", lines, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error tablesave: Path not found"));
    SaveByteTable(folder_.path(), std::array<std::uint8_t, 2>{1, 2}, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error tablesave: Path/File access error"));
}

TEST_F(TableFile, AFullDiskIsToldAndLeavesNoBeginning) {
    {
        const support::FileSizeLimit limit(1024);
        SaveTextTable(folder_ / "new.lam", std::vector<std::string>(300, "12.5"), dialogs_);
    }
    EXPECT_THAT(texts(), ElementsAre("Error tablesave: Disk full"));
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(TableFile, WhatIsNoFileIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const std::filesystem::path& path : {folder_ / "pipe", std::filesystem::path("/dev/full")}) {
        SaveByteTable(path, std::array<std::uint8_t, 2>{1, 2}, dialogs_);
        EXPECT_THAT(texts(), ElementsAre("Error tablesave: Path/File access error"));
        std::array<std::string, 3> lines;
        EXPECT_EQ(LoadTextTable(path, lines).error, kErrorPathFileAccess);
    }
}

TEST_F(TableFile, AReadOnlyFileIsNotReplaced) {
    const auto file = folder_.write("keep.lam", "old");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    SaveByteTable(file, std::array<std::uint8_t, 2>{1, 2}, dialogs_);
    EXPECT_THAT(texts(), ElementsAre("Error tablesave: Permission denied"));
    EXPECT_EQ(folder_.read("keep.lam"), "old");
}

TEST_F(TableFile, AFullDiskLeavesTheOldFileWhole) {
    const auto file = folder_.write("keep.lam", std::string(1280, '7'));
    const std::vector<std::string> lines(300, "12.5");
    {
        const support::FileSizeLimit limit(1024);
        SaveTextTable(file, lines, dialogs_);
    }
    EXPECT_THAT(texts(), ElementsAre("Error tablesave: Disk full"));
    EXPECT_EQ(folder_.read("keep.lam"), std::string(1280, '7'));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
    SaveTextTable(file, lines, dialogs_);
    EXPECT_EQ(folder_.read("keep.lam").size(), 299U * 6);
}

TEST_F(TableFile, LoadingFillsFromIndex1On) {
    std::array<std::string, 5> lines = {"kept", "", "", "", "old"};
    const auto load = LoadTextTable(folder_.write("t.txt", " 1 \r\n\r\nthree"), lines);
    EXPECT_EQ(load.lastIndex, 3);
    EXPECT_EQ(load.error, 0);
    EXPECT_THAT(lines, ElementsAre("kept", " 1 ", "", "three", "old"));
}

TEST_F(TableFile, AFileLongerThanTheTableEndsInAnErrorAndKeepsWhatWasRead) {
    std::array<std::string, 3> lines;
    const auto load = LoadTextTable(folder_.write("t.txt", "1\n2\n3\n"), lines);
    EXPECT_EQ(load.lastIndex, 2);
    EXPECT_EQ(load.error, platform::kErrorSubscript);
    EXPECT_THAT(lines, ElementsAre("", "1", "2"));
}

TEST_F(TableFile, AnUnreadableFileGivesItsError) {
    std::array<std::string, 3> lines;
    EXPECT_EQ(LoadTextTable(folder_ / "missing.txt", lines).error, kErrorFileNotFound);
    EXPECT_EQ(LoadTextTable(folder_.path(), lines).error, kErrorPathFileAccess);
}

TEST_F(TableFile, AFileFullOfBinaryLoadsWithoutHarm) {
    std::array<std::string, 3> lines;
    const auto load = LoadTextTable(folder_.write("t.txt", std::string(100000, '\0')), lines);
    EXPECT_EQ(load.lastIndex, 1);
}

TEST(OutputFile, AppendsToAnExistingFile) {
    const support::TempFolder folder;
    const auto path = folder.write("log.txt", "one\r\n");
    OutputFile file(path, OutputFile::Mode::Append);
    file.writeLine("two");
    file.close();
    EXPECT_EQ(folder.read("log.txt"), "one\r\ntwo\r\n");
}

TEST(AppendText, AddsToAFileOrMakesOne) {
    const support::TempFolder folder;
    appendText(folder / "log.txt", "one\r\n");
    appendText(folder / "log.txt", "two\r\n");
    EXPECT_EQ(folder.read("log.txt"), "one\r\ntwo\r\n");
}

TEST(AppendText, AFailureLeavesTheFileAsItWas) {
    const support::TempFolder folder;
    const auto path = folder.write("log.txt", "one\r\n");
    const support::FileSizeLimit full(7);
    EXPECT_EQ(errorOf([&] { appendText(path, "two\r\n"); }), kErrorDiskFull);
    EXPECT_EQ(errorOf([&] { appendText(folder / "new.txt", "more than seven bytes"); }), kErrorDiskFull);
    EXPECT_EQ(folder.read("log.txt"), "one\r\n");
    EXPECT_FALSE(folder.has("new.txt"));
}

TEST(AppendText, ANameIsNotCutAtANul) {
    const support::TempFolder folder;
    EXPECT_EQ(errorOf([&] { appendText(folder / std::string("log\0.txt", 8), "one"); }), kErrorPathFileAccess);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(OutputFile, DoesNotWaitForTheOtherEndOfAPipe) {
    const support::TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const auto mode : {OutputFile::Mode::Replace, OutputFile::Mode::Append}) {
        for (const std::filesystem::path& path : {folder / "pipe", folder.path()}) {
            try {
                const OutputFile file(path, mode);
                ADD_FAILURE() << path;
            } catch (const platform::RuntimeError& failure) {
                EXPECT_EQ(failure.number(), kErrorPathFileAccess);
                EXPECT_STREQ(failure.what(), "Path/File access error");
            }
        }
    }
}

}  // namespace
}  // namespace korvane::core
