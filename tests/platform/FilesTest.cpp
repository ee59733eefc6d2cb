#include <gmock/gmock.h>

#include "platform/Files.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

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
    EXPECT_TRUE(replaceFile(file, "new"));
    EXPECT_EQ(folder_.read("a"), "new");
    EXPECT_TRUE(replaceFile(folder_ / "b", "made"));
    EXPECT_EQ(folder_.read("b"), "made");
    EXPECT_THAT(folder_.names(), testing::UnorderedElementsAre("a", "b"));
}

TEST_F(Files, ReplacesByACopy) {
    const auto file = folder_.write("a", "old");
    EXPECT_TRUE(replaceFileByCopy(file, folder_.write("b", "new")));
    EXPECT_EQ(folder_.read("a"), "new");
    EXPECT_EQ(folder_.read("b"), "new");
    EXPECT_FALSE(replaceFileByCopy(file, folder_ / "missing"));
    EXPECT_EQ(folder_.read("a"), "new");
}

TEST_F(Files, AFullDiskLeavesTheOldFileWhole) {
    const auto file = folder_.write("a", "old");
    {
        const support::FileSizeLimit full(100);
        EXPECT_FALSE(replaceFile(file, std::string(101, 'x')));
    }
    EXPECT_EQ(folder_.read("a"), "old");
    EXPECT_THAT(folder_.names(), ElementsAre("a"));
}

TEST_F(Files, AReadOnlyFileIsNotReplaced) {
    const auto file = folder_.write("a", "old");
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_FALSE(replaceFile(file, "new"));
    EXPECT_EQ(folder_.read("a"), "old");
}

TEST_F(Files, NothingButAFileIsReplaced) {
    fs::create_directory(folder_ / "d");
    EXPECT_FALSE(replaceFile(folder_ / "d", "new"));
    EXPECT_TRUE(fs::is_directory(folder_ / "d"));
    EXPECT_FALSE(replaceFile(folder_ / "missing" / "a", "new"));
    EXPECT_FALSE(replaceFile("/dev/null", "new"));
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));
}

TEST_F(Files, ALinkStaysAndItsFileIsReplaced) {
    fs::create_directory(folder_ / "real");
    const auto file = folder_.write("real/a", "old");
    fs::create_symlink(file, folder_ / "link");
    EXPECT_TRUE(replaceFile(folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(folder_.read("real/a"), "new");
}

TEST_F(Files, TheNewFileMayBeReadByWhomTheOldOneWas) {
    const auto file = folder_.write("a", "old");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(replaceFile(file, "new"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Files, APlainNameLiesInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder_.path());
    EXPECT_TRUE(replaceFile("plain", "new"));
    fs::current_path(before);
    EXPECT_EQ(folder_.read("plain"), "new");
}

}  // namespace
}  // namespace korvane::platform
