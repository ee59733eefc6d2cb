// The program as users' scripts run it.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using support::TempFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class HeadlessRun : public testing::Test {
protected:
    Outcome run(const std::string& script, std::vector<std::string> more = {}) {
        std::vector<std::string> arguments{"--headless", "--virtual-time", "--folder", folder_.path().string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runProgram("korvane-tuner", arguments, script);
    }

    TempFolder folder_;
};

TEST_F(HeadlessRun, TellsTheIdentityAndLiveValuesOfTheVirtualEcu) {
    const auto outcome =
        run("choose frmSarn2.ComboPort 2\n"
            "click frmSarn2.btnConnect\n"
            "wait 2000\n"
            "get frmSarn2.Caption\n"
            "get frmSarn2.lblState.Caption\n"
            "get frmSarn2.lblValue(0).Text\n",
            {"--ecu", "type=11"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(linesOf(outcome.output),
                ElementsAre("ok", "ok", "ok", "ok \"Korvane Tuner v1.3 by Dulmer  Korvane3 full engine control\"",
                            "ok \"COM3; 57600 Connected\"",
                            "error frmSarn2.lblValue(0) has no property Text (a label has Caption)"));
}

// Row 511 is a word: the second write is cut off after its first cell.
TEST_F(HeadlessRun, CutsThePowerOfTheVirtualEcuAndTellsItsWear) {
    const auto outcome =
        run("click frmSarn2.btnConnect\nset frmSarn2.TimerRequestData.Enabled false\n"
            "call WriteEE 511 4500 false\nwait 10\necu wear\n"
            "ecu cut 6\ncall WriteEE 511 4500 false\nwait 10\necu wear\n"
            "call ReadEE 511\nwait 500\nget EETime(511)\n"
            "ecu power 1\nwait 300\ncall ReadEE 512\nwait 100\nget EEImage(512)\n",
            {"--ecu", "drive=off"});
    EXPECT_EQ(outcome.errors, "");
    const auto replies = linesOf(outcome.output);
    ASSERT_EQ(replies.size(), 17U);
    EXPECT_EQ(replies[4], R"(ok {"511":1,"512":1})");
    EXPECT_EQ(replies[8], R"(ok {"511":2,"512":1})");
    EXPECT_EQ(replies[11], "ok \"\"");
    EXPECT_EQ(replies[16], "ok 17") << "4500 is 17 * 256 + 148";
}

TEST_F(HeadlessRun, GivesTheSameRepliesAndTheSameBytesAtTheSameTimesOnEveryRun) {
    const std::string script =
        "click frmSarn2.btnConnect\nwatch frmSarn2.lblValue(6).Caption\nwait 5000\nchanges\nsent times\nnow\n"
        "ecu lose 0.05\necu flip 0.01\nwait 3000\nchanges\nget frmSarn2.bytesReceived\nget frmSarn2.picTrend.Drawing\n";
    const auto first = run(script, {"--ecu", "seed=7,drive=pull", "--trace", (folder_.path() / "one").string()});
    const auto second = run(script, {"--ecu", "seed=7,drive=pull", "--trace", (folder_.path() / "two").string()});
    EXPECT_EQ(first.status, 0);
    EXPECT_GT(first.output.size(), 10000U);
    EXPECT_EQ(first.output, second.output);
    EXPECT_EQ(folder_.read("one"), folder_.read("two"));
    // The first poll leaves 10 ms after the connect, and its byte is on the trace.
    EXPECT_THAT(folder_.read("one"), HasSubstr("10 > 78\n"));
    const auto other = run(script, {"--ecu", "seed=8,drive=pull"});
    EXPECT_NE(first.output, other.output);
}

TEST_F(HeadlessRun, PlaysBytesFromNowhereOnALineWithNobody) {
    const auto outcome =
        run("click frmSarn2.btnConnect\n"
            "sent\n"
            "wait 10\n"
            "sent\n"
            "receive 7905010D0D3A0B86\n"
            "receive 7G\n"
            "get frmSarn2.lblHWVer.Caption\n"
            "get SWType\n",
            {"--ecu", "none"});
    const auto replies = linesOf(outcome.output);
    ASSERT_EQ(replies.size(), 8U);
    EXPECT_EQ(replies[1], "ok \"520602ad\"");  // the settings window asks for the lambda sensor's type
    EXPECT_EQ(replies[3], "ok \"78\"");        // one poll
    EXPECT_EQ(replies[4], "ok");
    EXPECT_THAT(replies[5], StartsWith("error "));
    EXPECT_EQ(replies[6], "ok \"hwVer: 3.386\"");
    EXPECT_EQ(replies[7], "ok 11");
}

TEST_F(HeadlessRun, TellsDroppedFramesInTheDebugLogAlone) {
    const std::string script =
        "click frmSarn2.btnConnect\nreceive 540307010055\nreceive 5403080100AB\nwait 10\nget EEImage(1)\n";
    for (const bool debug : {false, true}) {
        const auto outcome = runProgram(
            "korvane-tuner", {"--headless", "--virtual-time", "--ecu", "none", "--folder", folder_.path().string()},
            script, [debug] { debug ? setenv("KORVANE_DEBUG", "1", 1) : unsetenv("KORVANE_DEBUG"); });
        EXPECT_THAT(linesOf(outcome.output), ElementsAre("ok", "ok", "ok", "ok", "ok 8"));
        EXPECT_EQ(outcome.errors, debug ? "dropped a frame 'T' of length 3: complement 55 instead of AB\n" : "");
    }
}

TEST_F(HeadlessRun, EndsWithTheMainWindowAndKeepsTheChoices) {
    const auto outcome =
        run("choose frmSarn2.ComboPort 4\nchoose frmSarn2.ComboBaud 6\nclick frmSarn2.chkUseSound\n"
            "click frmSarn2.btnConnect\nclose frmSarn2\nwait 1100\nget frmSarn2.Caption\n",
            {"--ecu", "type=11"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.output), ElementsAre("ok", "ok", "ok", "ok", "ok", "ok"));
    const auto again =
        run("get frmSarn2.ComboPort.ListIndex\nget frmSarn2.ComboBaud.Text\nget frmSarn2.chkUseSound.Value\n"
            "get useSound\n",
            {"--ecu", "type=11"});
    EXPECT_THAT(linesOf(again.output), ElementsAre("ok 4", "ok \"230400\"", "ok 1", "ok true"));
}

TEST_F(HeadlessRun, SaysWhatIsWrongWithAnOptionInOneLine) {
    const std::string nowhere = folder_.nowhere().string();
    for (const std::vector<std::string>& bad : {std::vector<std::string>{"--nonsense"},
                                                {"--ecu", "type=none"},
                                                {"--ecu", "speed"},
                                                {"--now", "yesterday"},
                                                {"--folder", nowhere},
                                                {"--script", nowhere},
                                                {"--trace", nowhere}}) {
        auto arguments = bad;
        arguments.insert(arguments.end(), {"--headless", "--virtual-time"});
        if (bad.front() != "--ecu") {
            arguments.insert(arguments.end(), {"--ecu", "type=11"});
        }
        if (bad.front() != "--folder") {
            arguments.insert(arguments.end(), {"--folder", folder_.path().string()});
        }
        const auto outcome = runProgram("korvane-tuner", arguments);
        EXPECT_EQ(outcome.status, 2) << bad.front();
        EXPECT_EQ(linesOf(outcome.errors).size(), 1U) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

TEST_F(HeadlessRun, SurvivesAnyInput) {
    std::string garbage("\0\xff\xfe get\nset\nget frmSarn2\nclick \"\nset frmSarn2.Caption {\"a\":[1,2\n", 60);
    garbage += std::string(3000, '[') + "\nset frmSarn2.Width 99999999999999999999\nnow\n";
    const auto outcome = run(garbage, {"--ecu", "type=11"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("ok 0\n"));
}

// With windows, on a display that nobody sees: a message box at the start must not stay open.
TEST(DisplayRun, IsNotHeldUpByAMessageBoxThatNobodyCanAnswer) {
    const TempFolder folder;
    const auto picture = (folder.path() / "main.png").string();
    const auto outcome =
        runProgram("korvane-tuner", {"--console", "--folder", folder.path().string(), "--ecu", "type=11"},
                   "messages\nscreenshot frmSarn2 " + picture + "\nget frmSarn2.Visible\nquit\n");
    EXPECT_EQ(outcome.status, 0);
    const auto replies = linesOf(outcome.output);
    ASSERT_EQ(replies.size(), 4U) << outcome.output << outcome.errors;
    EXPECT_THAT(replies[0], HasSubstr("Settings_par.ini file not found."));
    EXPECT_EQ(replies[1], "ok");
    EXPECT_EQ(replies[2], "ok true");
    EXPECT_EQ(folder.read("main.png").substr(1, 3), "PNG");
}

// The real machine without a display, a real pseudo-terminal, and the virtual ECU in a process of its own.
TEST(RealRun, TalksToTheVirtualEcuOverAPseudoTerminal) {
    const TempFolder folder;
    const auto port = (folder.path() / "ecu").string();
    const BackgroundProgram ecu("korvane-ecu", {"--pty", port, "--with-parent", "--drive", "idle"});
    const auto outcome = runProgram("korvane-tuner",
                                    {"--headless", "--folder", folder.path().string(), "--port", "COM2=" + port,
                                     "--trace", (folder.path() / "trace").string()},
                                    "wait 300\nchoose frmSarn2.ComboPort 1\nchoose frmSarn2.ComboBaud 6\n"
                                    "click frmSarn2.btnConnect\nset frmMisc.TimerInitialGetData.Enabled false\n"
                                    "wait 1800\nget frmSarn2.lblState.Caption\n"
                                    "get SWType\nget frmSarn2.isConnected\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.output),
                ElementsAre("ok", "ok", "ok", "ok", "ok", "ok", "ok \"COM2; 230400 Connected\"", "ok 11", "ok true"));
    EXPECT_THAT(folder.read("trace"), HasSubstr(" < 52\n"));
}

// COM9 is row 8 of the list. What is fixed stays in the file.
TEST(RealRun, ALineInThePreferencesFixesAPort) {
    const TempFolder folder;
    const auto port = (folder.path() / "ecu").string();
    folder.write("preferences.ini", "[Ports]\nCOM9=" + port + "\n");
    const BackgroundProgram ecu("korvane-ecu", {"--pty", port, "--with-parent", "--drive", "idle"});
    const auto outcome = runProgram("korvane-tuner", {"--headless", "--folder", folder.path().string()},
                                    "wait 300\nchoose frmSarn2.ComboPort 8\nchoose frmSarn2.ComboBaud 3\n"
                                    "click frmSarn2.btnConnect\nset frmMisc.TimerInitialGetData.Enabled false\n"
                                    "wait 1800\nget frmSarn2.lblState.Caption\nget SWType\n");
    EXPECT_THAT(linesOf(outcome.output),
                ElementsAre("ok", "ok", "ok", "ok", "ok", "ok", "ok \"COM9; 57600 Connected\"", "ok 11"));
    EXPECT_THAT(folder.read("preferences.ini"), HasSubstr("COM9=" + port));
}

// A variable of the environment for the programs that a test starts.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) {
        const char* const now = std::getenv(name);
        before_ = now != nullptr ? std::optional<std::string>(now) : std::nullopt;
        setenv(name, value.c_str(), 1);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST(RealRun, WithoutAFolderItKeepsItsFilesInTheHome) {
    const TempFolder folder;
    const Variable home("HOME", folder / "home");
    const Variable config("XDG_CONFIG_HOME", folder / "config");
    const Variable data("XDG_DATA_HOME", folder / "data");
    const auto outcome = runProgram("korvane-tuner", {"--headless"}, "choose frmSarn2.ComboPort 3\nwait 10\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(folder.read("config/korvane-tuner/preferences.ini"), HasSubstr("Port=3"));
    EXPECT_THAT(folder.read("data/korvane-tuner/Settings_par.ini"), HasSubstr("["));
    EXPECT_FALSE(std::filesystem::exists(folder / "home"));
}

// The lines of the agent's log after a minute of driving.
std::string agentLog(const std::vector<std::string>& options) {
    const TempFolder folder;
    std::vector<std::string> words{"--headless",           "--virtual-time", "--folder",
                                   folder.path().string(), "--ecu",          "type=11,drive=lap,seed=1"};
    words.insert(words.end(), options.begin(), options.end());
    const auto outcome = runProgram("korvane-tuner", words,
                                    "click frmSarn2.btnConnect\nset frmMisc.TimerInitialGetData.Enabled false\n"
                                    "wait 2000\nclick frmSarn2.btnKartat\nwait 500\nset frmMaps.chkInjAnal.Value 1\n"
                                    "set clsInjAnalyser.AgentEnable true\nwait 60000\n");
    EXPECT_EQ(outcome.status, 0);
    std::string log;
    for (const auto& name : folder.names()) {
        log += name.starts_with("FuelTuner") ? folder.read(name) : "";
    }
    return log;
}

TEST(RealRun, LogFilesHaveTheDecimalSeparatorOfTheOptionOrElseAPoint) {
    const auto comma = agentLog({"--decimal", ","});
    EXPECT_THAT(comma, HasSubstr(","));
    EXPECT_THAT(comma, Not(HasSubstr(".")));
    const Variable locale("LC_ALL", "C");
    const auto point = agentLog({});
    EXPECT_THAT(point, HasSubstr("."));
    EXPECT_THAT(point, Not(HasSubstr(",")));
}

TEST(RealRun, PreferencesAreKeptWhereTheOptionSays) {
    const TempFolder folder;
    const auto other = folder / "other.ini";
    const auto outcome = runProgram("korvane-tuner",
                                    {"--headless", "--virtual-time", "--ecu", "type=11", "--folder",
                                     folder.path().string(), "--preferences", other.string()},
                                    "choose frmSarn2.ComboPort 3\nwait 10\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(folder.read("other.ini"), HasSubstr("Port=3"));
    EXPECT_FALSE(std::filesystem::exists(folder / "preferences.ini"));
}

}  // namespace
}  // namespace korvane::app
