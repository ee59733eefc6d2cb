// The ways in which the program is started, as users' scripts see them.
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using support::TempFolder;
using testing::EndsWith;
using testing::HasSubstr;

class RunModes : public testing::Test {
protected:
    Outcome run(std::vector<std::string> arguments, const std::string& input = {}) {
        arguments.insert(arguments.end(), {"--folder", folder_.path().string()});
        return runProgram("korvane-tuner", arguments, input);
    }

    TempFolder folder_;
};

// Standard input is not read: its commands would fail.
TEST_F(RunModes, AScriptRunsToItsEndInEveryMode) {
    const auto script =
        folder_.write("script", "# two commands\nset frmSarn2.Tag \"seen\"\nget frmSarn2.Tag\n").string();
    for (const std::vector<std::string>& mode : {std::vector<std::string>{"--headless", "--virtual-time"},
                                                 std::vector<std::string>{"--headless"}, std::vector<std::string>{}}) {
        auto arguments = mode;
        arguments.insert(arguments.end(), {"--ecu", "type=11", "--script", script});
        const auto outcome = run(arguments, "get frmSarn2.nothing\n");
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, "ok\nok \"seen\"\n");
    }
}

TEST_F(RunModes, TheVirtualClockStartsWhereItIsTold) {
    const std::string script = "click frmSarn2.btnConnect\nreceive AA0055\nget frmSarn2.Caption\n";
    const std::vector<std::string> mode{"--headless", "--virtual-time", "--ecu", "none"};
    EXPECT_THAT(run(mode, script).output, EndsWith("Device started 12:00:00\"\n"));
    auto later = mode;
    later.insert(later.end(), {"--now", "2026-02-03 04:05:06"});
    EXPECT_THAT(run(later, script).output, EndsWith("Device started 04:05:06\"\n"));
}

TEST_F(RunModes, TheEndOfInputClosesTheWindowOnADisplayToo) {
    const auto trace = (folder_.path() / "trace").string();
    const auto outcome = run({"--console", "--ecu", "type=11", "--trace", trace},
                             "choose frmSarn2.ComboPort 3\nclick frmSarn2.btnConnect\n"
                             "set frmMisc.TimerInitialGetData.Enabled false\nwait 300\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "ok\nok\nok\nok\n");
    EXPECT_THAT(folder_.read("preferences.ini"), HasSubstr("Port=3"));
    EXPECT_THAT(folder_.read("trace"), HasSubstr(" > 78\n"));
}

class WithoutDisplay {
public:
    WithoutDisplay() {
        for (const auto* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            if (const char* const value = std::getenv(name)) {
                saved_.emplace_back(name, value);
            }
            ::unsetenv(name);
        }
    }
    WithoutDisplay(const WithoutDisplay&) = delete;
    WithoutDisplay& operator=(const WithoutDisplay&) = delete;
    ~WithoutDisplay() {
        for (const auto& [name, value] : saved_) {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
    }

private:
    std::vector<std::pair<std::string, std::string>> saved_;
};

TEST_F(RunModes, WithoutADisplayItSaysSoAndEnds) {
    const WithoutDisplay none;
    const auto outcome = run({"--ecu", "type=11"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("there is no display"));
    EXPECT_EQ(outcome.output, "");
}

TEST_F(RunModes, BytesFromNowhereNeedALineWithNobody) {
    const auto outcome =
        run({"--headless", "--virtual-time", "--ecu", "type=11"}, "click frmSarn2.btnConnect\nreceive AA0055\n");
    EXPECT_THAT(outcome.output, HasSubstr("ok\nerror "));
}

}  // namespace
}  // namespace korvane::app
