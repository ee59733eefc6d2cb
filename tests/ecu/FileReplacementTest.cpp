#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <vector>

#include "ecu/memory/FileReplacement.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class FileReplacement : public testing::Test {
protected:
    // Digits that come in this order.
    [[nodiscard]] static ReplacementSteps withDigits(std::vector<std::string> digits) {
        ReplacementSteps steps;
        steps.digits = [digits = std::move(digits), next = std::size_t{0}]() mutable { return digits.at(next++); };
        return steps;
    }
    [[nodiscard]] fs::perms mode() const { return fs::status(target_).permissions(); }

    support::TempFolder folder_;
    const fs::path target_ = folder_ / "x";
};

TEST_F(FileReplacement, MakesANewFile) {
    EXPECT_EQ(replaceFile(target_, "new"), "");
    EXPECT_EQ(folder_.read("x"), "new");
    EXPECT_THAT(folder_.names(), ElementsAre("x"));
}

TEST_F(FileReplacement, ANewFileHasTheModeThatTheUserWants) {
    const mode_t old = ::umask(027);
    EXPECT_EQ(replaceFile(target_, "new"), "");
    ::umask(old);
    EXPECT_EQ(mode(), fs::perms{0640});
}

TEST_F(FileReplacement, KeepsTheModeOfAnOldFile) {
    folder_.write("x", "old");
    for (const unsigned wanted : {0604U, 0200U, 0777U}) {
        fs::permissions(target_, fs::perms{wanted});
        EXPECT_EQ(replaceFile(target_, "new"), "");
        EXPECT_EQ(mode(), fs::perms{wanted});
    }
}

TEST_F(FileReplacement, LeavesAFileAloneThatIsMarkedReadOnly) {
    folder_.write("x", "old");
    fs::permissions(target_, fs::perms{0444});
    EXPECT_EQ(replaceFile(target_, "new"), "it is marked read-only");
    EXPECT_EQ(folder_.read("x"), "old");
}

TEST_F(FileReplacement, WritesUnderANameThatIsNobodyElses) {
    folder_.write("x.part", "mine");
    std::string made;
    ReplacementSteps steps = withDigits({"0123456789ab"});
    steps.written = [&made](const fs::path& path) { made = path.filename().string(); };
    EXPECT_EQ(replaceFile(target_, "new", steps), "");
    EXPECT_EQ(made, "x.korvane-0123456789ab");
    EXPECT_EQ(folder_.read("x.part"), "mine");
    EXPECT_THAT(folder_.names(), UnorderedElementsAre("x", "x.part"));
}

TEST_F(FileReplacement, TheOldContentIsThereUntilTheNewOneIsWhole) {
    folder_.write("x", "old");
    ReplacementSteps steps;
    steps.written = [this](const fs::path& made) {
        EXPECT_EQ(folder_.read("x"), "old");
        EXPECT_EQ(folder_.read(made.filename().string()), "new");
    };
    EXPECT_EQ(replaceFile(target_, "new", steps), "");
    EXPECT_EQ(folder_.read("x"), "new");
}

TEST_F(FileReplacement, DoesNotFollowALinkAtTheTemporaryName) {
    folder_.write("precious", "precious");
    fs::create_symlink(folder_ / "precious", folder_ / "x.korvane-000000000000");
    EXPECT_EQ(replaceFile(target_, "new", withDigits({"000000000000", "111111111111"})), "");
    EXPECT_EQ(folder_.read("x"), "new");
    EXPECT_EQ(folder_.read("precious"), "precious");
    EXPECT_TRUE(fs::is_symlink(folder_ / "x.korvane-000000000000"));
}

TEST_F(FileReplacement, GivesUpAtTheThirdNameThatIsTaken) {
    for (const char* digit : {"0", "1", "2"}) {
        fs::create_directory(folder_ / ("x.korvane-" + std::string(11, '0') + digit));
    }
    EXPECT_NE(replaceFile(target_, "new", withDigits({"000000000000", "000000000001", "000000000002"})), "");
    EXPECT_FALSE(folder_.has("x"));
}

TEST_F(FileReplacement, ALinkStaysAndWhatItLeadsToIsReplaced) {
    fs::create_directory(folder_ / "deep");
    folder_.write("deep/file", "old");
    fs::create_symlink("deep/second", target_);
    fs::create_symlink("file", folder_ / "deep/second");
    EXPECT_EQ(replaceFile(target_, "new"), "");
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_TRUE(fs::is_symlink(folder_ / "deep/second"));
    EXPECT_EQ(folder_.read("deep/file"), "new");
}

TEST_F(FileReplacement, ALinkToNothingGetsItsFile) {
    fs::create_symlink("file", target_);
    EXPECT_EQ(replaceFile(target_, "new"), "");
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(folder_.read("file"), "new");
}

TEST_F(FileReplacement, RefusesALinkToItself) {
    fs::create_symlink("x", target_);
    EXPECT_EQ(replaceFile(target_, "new"), "it is no regular file");
}

TEST_F(FileReplacement, RefusesWhatIsNoRegularFile) {
    fs::create_directory(target_);
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0666), 0);
    fs::create_symlink("pipe", folder_ / "link");
    for (const char* name : {"x", "pipe", "link"}) {
        EXPECT_EQ(replaceFile(folder_ / name, "new"), "it is no regular file") << name;
    }
    EXPECT_THAT(folder_.names(), UnorderedElementsAre("x", "pipe", "link"));
    EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
}

TEST_F(FileReplacement, AFullDiskLeavesTheOldFile) {
    folder_.write("x", "old");
    const support::FileSizeLimit limit(100);
    EXPECT_NE(replaceFile(target_, std::string(101, 'n')), "");
    EXPECT_EQ(folder_.read("x"), "old");
    EXPECT_THAT(folder_.names(), ElementsAre("x"));
    EXPECT_NE(replaceFile(folder_ / "y", std::string(101, 'n')), "");
    EXPECT_THAT(folder_.names(), ElementsAre("x"));
}

TEST_F(FileReplacement, RemovesWhatAnEarlierRunLeft) {
    folder_.write("x.korvane-0123456789ab", "half");
    EXPECT_EQ(replaceFile(target_, "new"), "");
    EXPECT_THAT(folder_.names(), ElementsAre("x"));
}

TEST_F(FileReplacement, RemovesNothingElse) {
    const std::vector<std::string> others = {
        "x.korvane-0123456789a",  "x.korvane-0123456789abc", "x.korvane-0123456789aB", "x.korvane-0123456789ag",
        "y.korvane-0123456789ab", "xx.korvane-0123456789ab", ".korvane-0123456789ab",  "x.0123456789ab"};
    for (const std::string& name : others) {
        folder_.write(name, "mine");
    }
    fs::create_directory(folder_ / "x.korvane-aaaaaaaaaaaa");
    fs::create_symlink("y.korvane-0123456789ab", folder_ / "x.korvane-bbbbbbbbbbbb");
    EXPECT_EQ(replaceFile(target_, "new"), "");
    EXPECT_EQ(folder_.names().size(), others.size() + 3);
}

TEST_F(FileReplacement, TriesAgainWhereAnotherProcessTookTheNewFileForALeftOver) {
    int times = 0;
    ReplacementSteps steps;
    steps.written = [&times](const fs::path& made) {
        if (++times < 3) {
            fs::remove(made);
        }
    };
    EXPECT_EQ(replaceFile(target_, "new", steps), "");
    EXPECT_EQ(times, 3);
    EXPECT_EQ(folder_.read("x"), "new");
}

TEST_F(FileReplacement, TriesNoMoreThanThreeTimes) {
    int times = 0;
    ReplacementSteps steps;
    steps.written = [&times](const fs::path& made) {
        ++times;
        fs::remove(made);
    };
    EXPECT_THAT(replaceFile(target_, "new", steps), HasSubstr("No such file"));
    EXPECT_EQ(times, 3);
}

TEST_F(FileReplacement, TakesTheLongestName) {
    const std::string longest(255, 'n');
    std::string made;
    ReplacementSteps steps;
    steps.written = [&made](const fs::path& path) { made = path.filename().string(); };
    EXPECT_EQ(replaceFile(folder_ / longest, "new", steps), "");
    EXPECT_EQ(folder_.read(longest), "new");
    EXPECT_EQ(made.size(), 255U);
    EXPECT_THAT(made, testing::StartsWith(std::string(234, 'n') + ".korvane-"));
}

TEST_F(FileReplacement, AFolderThatIsMissingIsAReason) {
    EXPECT_THAT(replaceFile(folder_ / "none/x", "new"), HasSubstr("No such file"));
}

TEST(RandomDigits, AreTwelveAndDiffer) {
    const std::string digits = randomDigits();
    EXPECT_EQ(digits.size(), 12U);
    EXPECT_EQ(digits.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_NE(digits, randomDigits());
}

}  // namespace
}  // namespace korvane::ecu
