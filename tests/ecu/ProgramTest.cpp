// The program korvane-ecu from outside.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "ecu/memory/EepromFile.h"
#include "ecu/server/Descriptor.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::filesystem::path program() {
    const char* folder = std::getenv("KORVANE_BIN");
    return std::filesystem::path(folder == nullptr ? "." : folder) / "korvane-ecu";
}

// A run of the program.
class Running {
public:
    // `prepare` runs in the new process before the program does.
    explicit Running(
        const std::vector<std::string>& arguments, void (*prepare)() = [] {}) {
        std::array<int, 2> output{};
        std::array<int, 2> errors{};
        EXPECT_EQ(::pipe2(output.data(), O_CLOEXEC), 0);
        EXPECT_EQ(::pipe2(errors.data(), O_CLOEXEC), 0);
        output_ = Descriptor(output[0]);
        errors_ = Descriptor(errors[0]);
        child_ = ::fork();
        if (child_ == 0) {
            ::dup2(output[1], STDOUT_FILENO);
            ::dup2(errors[1], STDERR_FILENO);
            prepare();
            become(arguments);
        }
        ::close(output[1]);
        ::close(errors[1]);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        if (child_ > 0) {
            end(SIGKILL);
        }
    }

    [[nodiscard]] std::string outputLine() const { return textOf(output_, '\n'); }
    [[nodiscard]] std::string errors() const { return textOf(errors_, '\0'); }
    // Sends the signal, 0 for none. Returns the exit status; -1 where a signal was the end.
    int end(int signal = 0) {
        if (signal != 0) {
            ::kill(child_, signal);
        }
        int status = -1;
        ::waitpid(std::exchange(child_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    [[noreturn]] static void become(const std::vector<std::string>& arguments) {
        std::string name = program().string();
        std::vector<std::string> texts = arguments;
        std::vector<char*> words = {name.data()};
        for (std::string& text : texts) {
            words.push_back(text.data());
        }
        words.push_back(nullptr);
        ::execv(name.c_str(), words.data());
        ::_exit(127);
    }
    static std::string textOf(const Descriptor& file, char last) {
        std::string text;
        for (char c = 0; ::read(file.number(), &c, 1) == 1 && c != last;) {
            text += c;
        }
        return text;
    }

    Descriptor output_;
    Descriptor errors_;
    pid_t child_ = -1;
};

class Program : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(program())) {
            GTEST_SKIP() << program() << " is not built";
        }
    }

    // Runs to the end: one line of errors, without the line feed.
    static std::string onlyError(const std::vector<std::string>& arguments, int wantedStatus) {
        Running run(arguments);
        std::string text = run.errors();
        EXPECT_EQ(run.end(), wantedStatus) << text;
        EXPECT_TRUE(text.ends_with("\n"));
        text.resize(text.size() - (text.empty() ? 0 : 1));
        return text;
    }

    support::TempFolder folder_;
};

TEST_F(Program, RunsUntilItIsToldToEnd) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const std::string link = folder_ / "link";
        const std::string save = folder_ / "save.txt";
        Running run({"--pty", link, "--save", save, "--with-parent"});
        const std::string line = run.outputLine();
        EXPECT_THAT(line, StartsWith("/dev/"));
        EXPECT_EQ(std::filesystem::read_symlink(link), line);
        EXPECT_EQ(run.end(signal), 0);
        EXPECT_FALSE(std::filesystem::is_symlink(std::filesystem::symlink_status(link)));
        std::vector<std::uint8_t> cells;
        EXPECT_EQ(readEepromFile(save, cells), "");
        EXPECT_EQ(cells.size(), 3001U);
    }
}

TEST_F(Program, TellsTheWearOfItsEepromAtItsEnd) {
    Running run({"--wear", folder_ / "wear.txt"});
    EXPECT_THAT(run.outputLine(), StartsWith("/dev/"));
    EXPECT_EQ(run.end(SIGTERM), 0);
    EXPECT_THAT(folder_.read("wear.txt"), testing::SizeIs(2 * 3001)) << "a 0 and a line end for each cell";
}

TEST_F(Program, AMistakeIsOneLineAndStatus2) {
    EXPECT_EQ(onlyError({"--lose", "2"}, 2), "korvane-ecu: lose takes 0 to 1, not \"2\"");
}

TEST_F(Program, AMistakeIsOneLineWhateverIsInIt) {
    const std::vector<std::vector<std::string>> mistakes = {{"a\nb"},
                                                            {"--a\rb\n", "1"},
                                                            {"--type", "1\n2\x1B[2J"},
                                                            {"--eeprom", (folder_ / "missing\n" / "x\n").string()},
                                                            {"--type"},
                                                            {"--drive", "\xFF\n"},
                                                            {"\n"},
                                                            {"--\n"},
                                                            {""},
                                                            {"--\n"},
                                                            {"--pty", "a", "\x7F"}};
    for (const auto& mistake : mistakes) {
        const std::string text = onlyError(mistake, 2);
        EXPECT_THAT(text, StartsWith("korvane-ecu: "));
        EXPECT_TRUE(std::ranges::none_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7F; })) << text;
    }
}

TEST_F(Program, ALinkThatCantBeMadeIsOneLineAndStatus1) {
    EXPECT_THAT(onlyError({"--pty", folder_ / "no\nfolder/x"}, 1), HasSubstr("no?folder/x"));
}

TEST_F(Program, AnEepromThatIsNoFileIsAMistake) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0666), 0);
    for (const std::filesystem::path& path : {std::filesystem::path("/dev/zero"), folder_ / "pipe", folder_.path()}) {
        EXPECT_THAT(onlyError({"--eeprom", path}, 2), HasSubstr("no regular file"));
    }
}

TEST_F(Program, AFileThatMayNotGrowIsOneLineAndStatus1) {
    const auto save = folder_.write("save.txt", "old");
    Running run({"--save", save}, [] {
        const rlimit limit{1024, 1024};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_THAT(run.outputLine(), StartsWith("/dev/"));
    EXPECT_EQ(run.end(SIGTERM), 1);
    EXPECT_THAT(run.errors(), testing::MatchesRegex("korvane-ecu: the EEPROM can't be saved to [^\n]*\n"));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"save.txt"});
    EXPECT_EQ(folder_.read("save.txt"), "old");
}

// A standard output that fails.
class ProgramOutput : public Program, public testing::WithParamInterface<void (*)()> {};

TEST_P(ProgramOutput, ThatCantBeWrittenIsOneLineAndStatus1) {
    const std::string link = folder_ / "link";
    for (const std::vector<std::string>& options : {std::vector<std::string>{"--pty", link}, {"--help"}}) {
        Running run(options, GetParam());
        EXPECT_THAT(run.errors(), testing::MatchesRegex("korvane-ecu: standard output can't be written: [^\n]*\n"));
        EXPECT_EQ(run.end(), 1);
        EXPECT_FALSE(std::filesystem::is_symlink(std::filesystem::symlink_status(link)));
    }
}

void fullOutput() {
    ::dup2(::open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
}

// Both numbers are free then, the second one for the terminal.
void closedInputAndOutput() {
    ::close(STDIN_FILENO);
    ::close(STDOUT_FILENO);
}

void outputWithoutReader() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, ProgramOutput, testing::Values(fullOutput, closedInputAndOutput, outputWithoutReader));

TEST_F(Program, ServesWithoutStandardInputAndErrors) {
    Running run({}, [] {
        ::close(STDIN_FILENO);
        ::close(STDERR_FILENO);
    });
    const std::string path = run.outputLine();
    EXPECT_THAT(path, StartsWith("/dev/"));
    EXPECT_EQ(run.end(SIGTERM), 0);
}

TEST_F(Program, HelpIsOnStandardOutput) {
    Running run({"--help"});
    EXPECT_THAT(run.outputLine(), HasSubstr("korvane-ecu"));
    EXPECT_EQ(run.errors(), "");
    EXPECT_EQ(run.end(), 0);
}

}  // namespace
}  // namespace korvane::ecu
