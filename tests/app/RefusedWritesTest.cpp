// Full disks and pipes without a reader: the program reports it and goes on.
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

const std::string kNoReplies = "korvane-tuner: replies can't be written: ";

// Those that the program has written itself, and not the toolkit.
std::string ownLines(const std::string& errors) {
    std::string own;
    for (const auto& line : linesOf(errors)) {
        own += line.starts_with("korvane-tuner: ") ? line + '\n' : "";
    }
    return own;
}

// The modes in which commands come from standard input.
class RefusedWrites : public testing::TestWithParam<Words> {
protected:
    Outcome run(const std::string& ecu, const std::string& input, const std::function<void()>& prepare) {
        auto arguments = GetParam();
        arguments.insert(arguments.end(), {"--ecu", ecu, "--folder", folder_.path().string()});
        return runProgram("korvane-tuner", arguments, input, prepare);
    }

    support::TempFolder folder_;
    const std::string choosePort_ = "get SWType\nchoose frmSarn2.ComboPort 3\nclick frmSarn2.btnConnect\n";
};

TEST_P(RefusedWrites, RepliesToAClosedPipeAreToldOnceAndTheCommandsGoOn) {
    const int pipe = brokenPipe();
    const auto outcome = run("none", choosePort_, [pipe] { dup2(pipe, STDOUT_FILENO); });
    close(pipe);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ownLines(outcome.errors), kNoReplies + "Broken pipe\n");
    EXPECT_THAT(folder_.read("preferences.ini"), HasSubstr("Port=3"));
}

TEST_P(RefusedWrites, RepliesToAFullDiskAreToldOnceAndTheCommandsGoOn) {
    const auto outcome = run("none", choosePort_, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ownLines(outcome.errors), kNoReplies + "No space left on device\n");
    EXPECT_THAT(folder_.read("preferences.ini"), HasSubstr("Port=3"));
}

TEST_P(RefusedWrites, ADebugLogThatNobodyReadsHurtsNobody) {
    const int pipe = brokenPipe();
    const auto outcome = run("none", "at 1 nonsense\nat 2 nonsense\nwait 5\nget SWType\n", [pipe] {
        setenv("KORVANE_DEBUG", "1", 1);
        dup2(pipe, STDERR_FILENO);
    });
    close(pipe);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, EndsWith("ok 0\n"));
}

// The tune is written in place; a write beyond the limit is refused with a signal that ends other programs.
TEST_P(RefusedWrites, AFileBeyondTheLimitIsAMessage) {
    const auto tune = folder_ / "tune.txt";
    const auto outcome = run("type=11",
                             "click frmSarn2.btnConnect\nset frmMisc.TimerInitialGetData.Enabled false\nwait 300\n"
                             "click frmSarn2.btnKartat\nfile " +
                                 tune.string() + "\nclick frmMaps.btnSave\nmessages\n",
                             [] {
                                 const rlimit small{1000, 1000};
                                 setrlimit(RLIMIT_FSIZE, &small);
                             });
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("Error save: Disk full"));
    EXPECT_EQ(std::filesystem::file_size(tune), 1000U);
}

INSTANTIATE_TEST_SUITE_P(Modes, RefusedWrites,
                         testing::Values(Words{"--headless"}, Words{"--headless", "--virtual-time"},
                                         Words{"--console"}));

TEST(RefusedNewFolder, HasTheChannelNamesWholeOrNotAtAll) {
    const support::TempFolder home;
    const auto start = [&home](rlim_t limit) {
        return runProgram("korvane-tuner", {"--headless", "--virtual-time", "--ecu", "none"}, "", [&home, limit] {
            setenv("XDG_DATA_HOME", home.path().c_str(), 1);
            setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
            const rlimit small{limit, limit};
            setrlimit(RLIMIT_FSIZE, &small);
        });
    };
    EXPECT_EQ(start(500).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(home / "korvane-tuner"));
    std::filesystem::remove(home / "korvane-tuner");
    EXPECT_EQ(start(100000).status, 0);
    EXPECT_THAT(home.read("korvane-tuner/Settings_par.ini"), HasSubstr("[Par30]"));
}

TEST(RefusedHelp, ThatCanNotBeWrittenIsAFailure) {
    const auto outcome =
        runProgram("korvane-tuner", {"--help"}, "", [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, StartsWith(kNoReplies));
}

}  // namespace
}  // namespace korvane::app
