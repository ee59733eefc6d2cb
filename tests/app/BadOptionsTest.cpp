// What the program reports about options that it can't take.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using testing::StartsWith;
using Words = std::vector<std::string>;

void expectOneLine(const Words& words) {
    const auto outcome = runProgram("korvane-tuner", words);
    EXPECT_EQ(outcome.status, 2);
    ASSERT_FALSE(outcome.errors.empty());
    EXPECT_EQ(outcome.errors.find_first_of("\n\r\x1B\x7F\x85\xFF"), outcome.errors.size() - 1) << outcome.errors;
    EXPECT_THAT(outcome.errors, StartsWith("korvane-tuner: "));
}

class BadOptions : public testing::TestWithParam<Words> {};

TEST_P(BadOptions, AreToldOnOneLineOfText) {
    expectOneLine(GetParam());
}

const std::string kNasty = "a\n\r\x1B[31m\x7F\xC2\x85\xFF";

INSTANTIATE_TEST_SUITE_P(OfAnyBytes, BadOptions,
                         testing::Values(Words{kNasty}, Words{"--headless", "--ecu", "type=11\nx"},
                                         Words{"--headless", "--ecu", kNasty},
                                         Words{"--headless", "--ecu", "type=" + kNasty}, Words{"--port", kNasty},
                                         Words{"--connect", kNasty}, Words{"--now", kNasty}, Words{"--decimal", kNasty},
                                         Words{"--script", kNasty}, Words{"--folder", kNasty}));

TEST(BadTrace, IsToldOnOneLineOfTextToo) {
    const support::TempFolder folder;
    expectOneLine({"--headless", "--virtual-time", "--ecu", "none", "--folder", folder.path().string(), "--trace",
                   (folder / kNasty / "trace").string()});
}

}  // namespace
}  // namespace korvane::app
