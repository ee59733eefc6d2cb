#include <algorithm>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Files.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

const std::error_code kDone;

class Files : public testing::Test {
protected:
    support::TempFolder folder_;
};

TEST_F(Files, ReadsAFileUpToItsLimit) {
    const auto file = folder_.write("a", std::string("12\0004\n", 5));
    EXPECT_EQ(readFile(file, 5), std::string("12\0004\n", 5));
    EXPECT_FALSE(readFile(file, 4));
    EXPECT_EQ(readFile(folder_.write("empty", ""), 5), "");
}

TEST_F(Files, ReadsNothingButRegularFiles) {
    EXPECT_FALSE(readFile(folder_ / "missing", 100));
    EXPECT_FALSE(readFile(folder_.path(), 100));
    EXPECT_FALSE(readFile("/dev/zero", 100));
}

TEST_F(Files, ReplacesAFileAndLeavesNothingElse) {
    const auto file = folder_.write("a", "old");
    EXPECT_EQ(kDone, replaceFile(file, "new"));
    EXPECT_EQ(folder_.read("a"), "new");
    EXPECT_EQ(kDone, replaceFile(folder_ / "b", "made"));
    EXPECT_EQ(folder_.read("b"), "made");
    EXPECT_THAT(folder_.names(), testing::UnorderedElementsAre("a", "b"));
}

TEST_F(Files, AFullDiskLeavesTheOldFileWhole) {
    const auto file = folder_.write("a", "old");
    {
        const support::FileSizeLimit full(100);
        EXPECT_EQ(replaceFile(file, std::string(101, 'x')), std::errc::file_too_large);
    }
    EXPECT_EQ(folder_.read("a"), "old");
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
}

TEST_F(Files, AFullDiskLeavesNoBeginningOfANewFile) {
    {
        const support::FileSizeLimit full(100);
        EXPECT_EQ(replaceFile(folder_ / "a", std::string(101, 'x')), std::errc::file_too_large);
    }
    EXPECT_THAT(folder_.names(), IsEmpty());
}

// While the file is written there is no file of that name, up to the last step.
TEST_F(Files, ANewFileAppearsWhole) {
    std::vector<std::string> seen;
    EXPECT_EQ(kDone, replaceFile(folder_ / "a", [&](const FileSink& write) {
                  write(std::string(100000, 'x'));
                  seen = folder_.names();
              }));
    EXPECT_THAT(seen, ElementsAre(MatchesRegex("a\\.korvane-[0-9a-f]{12}")));
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
    EXPECT_EQ(folder_.read("a"), std::string(100000, 'x'));
}

TEST_F(Files, AReadOnlyFileIsNotReplaced) {
    const auto file = folder_.write("a", "old");
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(replaceFile(file, "new"), std::errc::permission_denied);
    EXPECT_EQ(folder_.read("a"), "old");
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
}

TEST_F(Files, NothingButAFileIsReplaced) {
    fs::create_directory(folder_ / "d");
    EXPECT_EQ(replaceFile(folder_ / "d", "new"), std::errc::is_a_directory);
    EXPECT_TRUE(fs::is_directory(folder_ / "d"));
    EXPECT_EQ(replaceFile(folder_ / "missing" / "a", "new"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(replaceFile("", "new"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(replaceFile(folder_.write("a", "old") / "b", "new"), std::errc::not_a_directory);
    EXPECT_EQ(replaceFile("/dev/null", "new"), std::errc::invalid_argument);
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));
}

TEST_F(Files, NeitherReadingNorReplacingWaitsForTheOtherEndOfAPipe) {
    const auto pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(pipe, 100));
    EXPECT_EQ(replaceFile(pipe, "new"), std::errc::invalid_argument);
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(Files, ALinkToNoFileStaysAndTheFileIsMade) {
    fs::create_directory(folder_ / "real");
    fs::create_symlink("real/a", folder_ / "link");
    EXPECT_EQ(kDone, replaceFile(folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(folder_.read("real/a"), "new");
}

TEST_F(Files, LinksInARingAreNoFile) {
    fs::create_symlink("one", folder_ / "two");
    fs::create_symlink("two", folder_ / "one");
    EXPECT_EQ(replaceFile(folder_ / "one", "new"), std::errc::too_many_symbolic_link_levels);
    EXPECT_TRUE(fs::is_symlink(folder_ / "one"));
}

TEST_F(Files, TheLongestNameHasRoomForTheFileInTheMaking) {
    std::string name = "a";
    for (int i = 0; i < 127; ++i) {
        name += "\xC3\xA4";  // 2 bytes
    }
    std::vector<std::string> seen;
    EXPECT_EQ(kDone, replaceFile(folder_ / name, [&](const FileSink&) { seen = folder_.names(); }));
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen.front().substr(0, seen.front().size() - 12), name.substr(0, 233) + ".korvane-");
    EXPECT_THAT(folder_.names(), ElementsAre(name));
}

TEST_F(Files, ACutNameEndsWithAWholeCharacter) {
    std::string name;
    for (int i = 0; i < 127; ++i) {
        name += "\xC3\xA4";
    }
    std::vector<std::string> seen;
    EXPECT_EQ(kDone, replaceFile(folder_ / name, [&](const FileSink&) { seen = folder_.names(); }));
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen.front().substr(0, seen.front().size() - 12), name.substr(0, 232) + ".korvane-");
}

TEST_F(Files, WhatKilledProgramsLeftBehindIsRemovedBefore) {
    folder_.write("a.korvane-0123456789ab", "half");
    folder_.write("a.korvane-ffffffffffff", "");
    EXPECT_EQ(kDone, replaceFile(folder_ / "a", "new"));
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
}

// The names of backups contain the time: a later one never has the name of one that was killed.
TEST_F(Files, WhatAKilledWriteOfAnotherFileLeftGoesToo) {
    folder_.write("EEPROM_12_00_00.txt.korvane-0123456789ab", "half");
    EXPECT_EQ(kDone, replaceFile(folder_ / "EEPROM_12_05_00.txt", "new"));
    EXPECT_THAT(folder_.names(), ElementsAre("EEPROM_12_05_00.txt"));
}

TEST_F(Files, NothingElseIsRemoved) {
    const std::vector<std::string> kept = {
        "a.korvane-0123456789a", "a.korvane-0123456789abc",    "a.korvane-0123456789aB", "a.korvane-0123456789a.",
        "a.0123456789ab",        "a.korvane-0123456789ab.txt", "a.kORVANE-0123456789ab", "b",
    };
    for (const auto& name : kept) {
        folder_.write(name, "mine");
    }
    fs::create_directory(folder_ / "a.korvane-00000000000d");
    fs::create_symlink("b", folder_ / "a.korvane-00000000000e");
    EXPECT_EQ(kDone, replaceFile(folder_ / "a", "new"));
    for (const auto& name : kept) {
        EXPECT_EQ(folder_.read(name), "mine");
    }
    EXPECT_TRUE(fs::is_directory(folder_ / "a.korvane-00000000000d"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "a.korvane-00000000000e"));
}

// As the clean-up of another program does.
TEST_F(Files, AFileThatIsTakenAwayInTheMakingIsMadeAnew) {
    for (int taken = 0; taken <= 3; ++taken) {
        int turns = 0;
        const auto result = replaceFile(folder_ / "a", [&](const FileSink& write) {
            write(std::to_string(taken));
            if (++turns <= taken) {
                fs::remove(folder_ / folder_.names().at(0));
            }
        });
        EXPECT_EQ(turns, std::min(taken + 1, 3));
        if (taken < 3) {
            EXPECT_EQ(kDone, result);
            EXPECT_EQ(folder_.read("a"), std::to_string(taken));
            fs::remove(folder_ / "a");
        } else {
            EXPECT_EQ(result, std::errc::no_such_file_or_directory);
            EXPECT_THAT(folder_.names(), IsEmpty());
        }
    }
}

// The signal ends the process in the middle of its write, as a kill does.
TEST_F(Files, AKillLeavesTheOldFileAndTheNextWriteNothingElse) {
    const auto file = folder_.write("a", "old");
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none{0, 0};
        const rlimit small{5000, 5000};
        setrlimit(RLIMIT_CORE, &none);
        setrlimit(RLIMIT_FSIZE, &small);
        static_cast<void>(replaceFile(file, std::string(20000, 'x')));
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder_.names().size(), 2U);
    EXPECT_EQ(folder_.read("a"), "old");
    EXPECT_EQ(kDone, replaceFile(file, "new"));
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
}

TEST_F(Files, ALinkStaysAndItsFileIsReplaced) {
    fs::create_directory(folder_ / "real");
    const auto file = folder_.write("real/a", "old");
    fs::create_symlink(file, folder_ / "link");
    EXPECT_EQ(kDone, replaceFile(folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(folder_.read("real/a"), "new");
}

TEST_F(Files, TheNewFileMayBeReadByWhomTheOldOneWas) {
    const auto file = folder_.write("a", "old");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(kDone, replaceFile(file, "new"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Files, MovesAFileAndReplacesNone) {
    const auto file = folder_.write("a", "one");
    EXPECT_EQ(kDone, moveFile(file, folder_ / "b"));
    EXPECT_THAT(folder_.names(), ElementsAre("b"));
    EXPECT_EQ(folder_.read("b"), "one");
    folder_.write("c", "other");
    EXPECT_EQ(moveFile(folder_ / "b", folder_ / "c"), std::errc::file_exists);
    EXPECT_EQ(moveFile(folder_ / "b", folder_ / "missing" / "c"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(moveFile(folder_ / "missing", folder_ / "d"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(moveFile(folder_.path(), folder_ / "d"), std::errc::invalid_argument);
    EXPECT_EQ(folder_.read("b"), "one");
    EXPECT_EQ(folder_.read("c"), "other");
}

TEST_F(Files, APlainNameLiesInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder_.path());
    EXPECT_EQ(kDone, replaceFile("plain", "new"));
    fs::current_path(before);
    EXPECT_EQ(folder_.read("plain"), "new");
}

}  // namespace
}  // namespace korvane::platform
