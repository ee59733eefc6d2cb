// --strict: the first error ends a headless run.
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "app/StrictRun.h"
#include "core/files/ChannelFile.h"
#include "platform/virtual/VirtualPump.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using platform::MessageBox;
using platform::MessageIcon;
using testing::ElementsAre;
using testing::IsEmpty;

class StrictRunTest : public testing::Test {
protected:
    platform::VirtualPump pump_{{2026, 1, 5, 12, 0, 0}};
    int quits_ = 0;
    std::vector<std::string> reasons_;
    StrictRun run_{pump_, [this] { ++quits_; }, [this](std::string_view why) { reasons_.emplace_back(why); }};
};

TEST_F(StrictRunTest, GoesOnWhileAllIsWell) {
    run_.hear("ok\n");
    run_.hear("ok \"error\"\n");
    run_.show({"Help", "words", MessageIcon::Information});
    run_.show({"Korvane Tuner", std::string(core::kNoChannelFile), MessageIcon::None});
    pump_.wait(1);
    EXPECT_FALSE(run_.failed());
    EXPECT_EQ(quits_, 0);
    EXPECT_THAT(reasons_, IsEmpty());
}

TEST_F(StrictRunTest, EndsAtTheFirstErrorReplyAndNamesItsCommand) {
    run_.hear("ok\n");
    run_.hear("error there is no window frmX\n");
    run_.hear("error another\n");
    EXPECT_TRUE(run_.failed());
    EXPECT_EQ(quits_, 1);
    EXPECT_THAT(reasons_, ElementsAre("--strict: command 2: there is no window frmX"));
}

// The handler that shows the box returns first.
TEST_F(StrictRunTest, EndsBehindTheFirstErrorBox) {
    for (const auto icon : {MessageIcon::None, MessageIcon::Exclamation, MessageIcon::Critical}) {
        run_.show({"", "Error save: a\r\nb", icon});
    }
    EXPECT_EQ(quits_, 0);
    pump_.wait(1);
    EXPECT_EQ(quits_, 1);
    EXPECT_THAT(reasons_, ElementsAre("--strict: message box: Error save: a b"));
}

Outcome strictly(const std::vector<std::string>& options, const std::string& script) {
    const support::TempFolder folder;
    std::vector<std::string> arguments{"--headless", "--strict", "--folder", folder.path().string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return runProgram("korvane-tuner", arguments, script);
}

TEST(StrictProgram, StopsAtTheFirstErrorReply) {
    for (const auto& options : std::vector<std::vector<std::string>>{{"--virtual-time", "--ecu", "none"}, {}}) {
        const auto outcome = strictly(options, "get SWType\nget nothing\nget SWType\n");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(linesOf(outcome.output).size(), 2U) << outcome.output;
        EXPECT_THAT(outcome.errors, testing::StartsWith("korvane-tuner: --strict: command 2: "));
    }
}

TEST(StrictProgram, StopsAtAPortThatDoesNotOpen) {
    const auto outcome = strictly({"--port", "COM1=/dev/null/none", "--connect", "COM1"}, "wait 1000\nget SWType\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, testing::StartsWith("korvane-tuner: --strict: message box:   Error "));
}

TEST(StrictProgram, EndsWellWithoutErrors) {
    const auto outcome = strictly({"--virtual-time", "--ecu", "type=11"}, "click frmSarn2.btnConnect\nwait 2000\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

// Returns what the user's own preferences hold after a connect.
bool keepsPreferences(const std::vector<std::string>& options) {
    const support::TempFolder home;
    std::vector<std::string> arguments{"--headless"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto outcome =
        runProgram("korvane-tuner", arguments, "choose frmSarn2.ComboPort 4\nclick frmSarn2.btnConnect\n", [&] {
            ::setenv("HOME", home.path().c_str(), 1);
            ::unsetenv("XDG_CONFIG_HOME");
            ::unsetenv("XDG_DATA_HOME");
        });
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    return home.has(".config/korvane-tuner/preferences.ini");
}

TEST(OwnPreferences, AreNotWrittenByATrialOnTheVirtualEcu) {
    EXPECT_FALSE(keepsPreferences({"--virtual-time", "--ecu", "none"}));
    EXPECT_FALSE(keepsPreferences({"--ecu", "type=11"}));
    EXPECT_TRUE(keepsPreferences({"--port", "COM5=/dev/null"}));
}

}  // namespace
}  // namespace korvane::app
