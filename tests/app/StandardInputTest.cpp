// Commands from a standard input that does not block, as a parent process may hand it on.
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/TempFolder.h"

namespace korvane::app {
namespace {

class StandardInput : public testing::TestWithParam<std::vector<std::string>> {
protected:
    StandardInput() {
        EXPECT_EQ(pipe(commands_.data()), 0);
        EXPECT_EQ(pipe(replies_.data()), 0);
        fcntl(commands_[0], F_SETFL, O_NONBLOCK);
        child_ = fork();
        if (child_ == 0) {
            become();
        }
        close(commands_[0]);
        close(replies_[1]);
    }
    ~StandardInput() override {
        close(commands_[1]);
        close(replies_[0]);
        waitpid(child_, nullptr, 0);
    }

    std::string answer(const std::string& command) {
        const std::string line = command + "\n";
        EXPECT_EQ(write(commands_[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
        std::string reply;
        for (char each = 0; read(replies_[0], &each, 1) == 1 && each != '\n';) {
            reply += each;
        }
        return reply;
    }

private:
    [[noreturn]] void become() {
        dup2(commands_[0], STDIN_FILENO);
        dup2(replies_[1], STDOUT_FILENO);
        for (const int each : {commands_[0], commands_[1], replies_[0], replies_[1]}) {
            close(each);
        }
        const char* const bin = std::getenv("KORVANE_BIN");
        const std::string program = std::string(bin != nullptr ? bin : "bin") + "/korvane-tuner";
        std::vector<std::string> texts{program, "--headless", "--ecu", "none", "--folder", folder_.path().string()};
        texts.insert(texts.end(), GetParam().begin(), GetParam().end());
        std::vector<char*> words;
        for (auto& text : texts) {
            words.push_back(text.data());
        }
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }

    support::TempFolder folder_;
    std::array<int, 2> commands_{-1, -1};
    std::array<int, 2> replies_{-1, -1};
    pid_t child_ = -1;
};

TEST_P(StandardInput, IsWaitedForWhereItHasNothingYet) {
    EXPECT_EQ(answer("get SWType"), "ok 0");
    EXPECT_EQ(answer("get SWType"), "ok 0");
    EXPECT_EQ(answer("get Features"), "ok -1");
}

TEST(NoStandardInput, EndsTheProgramAtOnce) {
    const support::TempFolder folder;
    const char* const bin = std::getenv("KORVANE_BIN");
    const std::string program = std::string(bin != nullptr ? bin : "bin") + "/korvane-tuner";
    const std::string command =
        "timeout 20 '" + program + "' --headless --ecu none --folder '" + folder.path().string() + "' <&- >&-";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

INSTANTIATE_TEST_SUITE_P(Clocks, StandardInput,
                         testing::Values(std::vector<std::string>{}, std::vector<std::string>{"--virtual-time"}));

}  // namespace
}  // namespace korvane::app
