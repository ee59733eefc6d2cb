// The program korvane-ecu from outside.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ecu/EepromFile.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::filesystem::path program() {
    const char* folder = std::getenv("KORVANE_BIN");
    return std::filesystem::path(folder == nullptr ? "." : folder) / "korvane-ecu";
}

class Program : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(program())) {
            GTEST_SKIP() << program() << " is not built";
        }
    }

    // What a shell command prints, and its exit status.
    static std::string shell(const std::string& command, int& status) {
        std::FILE* pipe = ::popen(command.c_str(), "r");
        std::string text;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            text += static_cast<char>(c);
        }
        status = WEXITSTATUS(::pclose(pipe));
        return text;
    }

    support::TempFolder folder_;
};

TEST_F(Program, RunsUntilItIsToldToEnd) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const std::string link = folder_ / "link";
        const std::string save = folder_ / "save.txt";
        std::array<int, 2> out{};
        ASSERT_EQ(::pipe(out.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(out[1], STDOUT_FILENO);
            ::execl(program().c_str(), "korvane-ecu", "--pty", link.c_str(), "--save", save.c_str(), "--with-parent",
                    nullptr);
            ::_exit(127);
        }
        ::close(out[1]);
        std::string line;
        for (char c = 0; ::read(out[0], &c, 1) == 1 && c != '\n';) {
            line += c;
        }
        EXPECT_THAT(line, StartsWith("/dev/"));
        EXPECT_EQ(std::filesystem::read_symlink(link), line);
        ::kill(child, signal);
        int status = -1;
        ::waitpid(child, &status, 0);
        ::close(out[0]);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0);
        EXPECT_FALSE(std::filesystem::is_symlink(std::filesystem::symlink_status(link)));
        std::vector<std::uint8_t> cells;
        EXPECT_EQ(readEepromFile(save, cells), "");
        EXPECT_EQ(cells.size(), 3001U);
    }
}

TEST_F(Program, AMistakeIsOneLineAndStatus2) {
    int status = 0;
    const std::string text = shell(program().string() + " --lose 2 2>&1 >/dev/null", status);
    EXPECT_EQ(text, "korvane-ecu: lose takes 0 to 1, not \"2\"\n");
    EXPECT_EQ(status, 2);
}

TEST_F(Program, ALinkThatCantBeMadeIsOneLineAndStatus1) {
    int status = 0;
    const std::string link = folder_.nowhere().string();
    const std::string text = shell(program().string() + " --pty " + link + " 2>&1 >/dev/null", status);
    EXPECT_THAT(text, HasSubstr(link));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_EQ(status, 1);
}

TEST_F(Program, HelpIsOnStandardOutput) {
    int status = 1;
    EXPECT_THAT(shell(program().string() + " --help 2>/dev/null", status), HasSubstr("--pty PATH"));
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace korvane::ecu
