// Every line but blank ones and comments has its one reply, whatever it holds.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

TEST(ReplyCount, IsThatOfTheLinesWithACommand) {
    std::mt19937 random(1);
    std::string input;
    for (int line = 0; line < 2000; ++line) {
        input += 'x';
        for (auto length = random() % 60; length > 0; --length) {
            const auto byte = static_cast<char>(random() % 256);
            input += byte == '\n' ? ' ' : byte;
        }
        input += line % 10 == 0 ? "\n\n# comment\n" : "\n";
    }
    const support::TempFolder folder;
    const auto outcome = runProgram(
        "korvane-tuner", {"--headless", "--virtual-time", "--ecu", "none", "--folder", folder.path().string()}, input);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 2000);
}

}  // namespace
}  // namespace korvane::app
