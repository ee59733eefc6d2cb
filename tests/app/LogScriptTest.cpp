// The log viewer by script, in virtual time: a drive is recorded, opened, looked at, replayed and compared.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/ScriptBench.h"
#include "support/LogText.h"

namespace korvane::app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class LogScript : public ScriptBench {
protected:
    // The replies that have a value; an error fails the test.
    [[nodiscard]] std::vector<std::string> run(const std::string& script, const std::vector<std::string>& more = {},
                                               const std::string& ecu = "type=11,drive=lap") const {
        std::vector<std::string> values;
        for (const auto& reply : goodRepliesTo(script, ecu, more)) {
            if (reply.starts_with("ok ")) {
                values.push_back(reply.substr(3));
            }
        }
        return values;
    }
};

const char* const kChannels =
    "get liveValues(0).value\n"
    "get liveValues(1).value\n"
    "get liveValues(3).value\n"
    "get liveValues(4).value\n"
    "get liveValues(5).value\n"
    "get liveValues(6).value\n"
    "get liveValues(10).value\n"
    "get liveValues(21).value\n";
constexpr std::size_t kCount = 8;

// The channels of the 21st row, at the drive and in its replay.
std::string story(const std::string& folder) {
    std::string script =
        "click frmSarn2.btnConnect\n"
        "set frmMisc.TimerInitialGetData.Enabled false\n"
        "wait 30000\n"
        "set frmSarn2.txtDatalogFile.Text \"drive\"\n"
        "click frmSarn2.chkDatalog\n";
    for (int i = 0; i < 400; ++i) {
        script += "wait 10\nget logDataCount\n" + std::string(kChannels);
    }
    script +=
        "wait 116000\n"
        "click frmSarn2.chkDatalog\n"
        "click frmSarn2.btnDatalogTrend\n"
        "file " +
        folder +
        "/drive.txt\n"
        "click frmTrend_txt.btnLoad\n"
        "click frmTrend_txt.btnSimulate\n";
    for (int row = 0; row < 20; ++row) {
        script += "call clsTXTdata.getNextSimDataPacket\n";
    }
    return script + "call clsTXTdata.getNextSimDataPacket\n" + kChannels;
}

TEST_F(LogScript, AReplayHasTheChannelsOfTheDrive) {
    const auto values = run(story(folder_.path().string()));
    ASSERT_GE(values.size(), 400 * (kCount + 1) + 21 + kCount);
    const std::vector<std::string> replayed(values.end() - kCount, values.end());
    for (std::size_t i = 0; i < 400; ++i) {
        const auto at = values.begin() + static_cast<std::ptrdiff_t>(i * (kCount + 1));
        if (*at == "21") {
            EXPECT_EQ(std::vector<std::string>(at + 1, at + 1 + kCount), replayed);
            return;
        }
    }
    FAIL() << "no 21st row within four seconds";
}

TEST_F(LogScript, TheViewerIsDrivenByItsNames) {
    folder_.write("log.txt", support::numberedLog(1200));
    const auto values =
        run("get clsTXTdata.ItemCount\n"
            "click frmSarn2.btnDatalogTrend\n"
            "get frmTrend_txt.Caption\n"
            "get clsTXTdata.ItemCount\n"
            "file " +
                (folder_ / "log.txt").string() +
                "\n"
                "click frmTrend_txt.btnLoad\n"
                "dialogs\n"
                "get clsTXTdata.ItemCount\n"
                "get frmTrend_txt.lblMaxpoints.Caption\n"
                "choose frmTrend_txt.Combopoints 0\n"
                "click frmTrend_txt.btnNext\n"
                "key frmTrend_txt.Picture1 37\n"
                "get frmTrend_txt.Cursor.Row\n"
                "get frmTrend_txt.lblCursor.Caption\n"
                "get frmTrend_txt.ActiveControl\n"
                "close frmTrend_txt\n"
                "get clsTXTdata.ItemCount\n",
            {}, "none");
    EXPECT_THAT(values, ElementsAre("null", "\"Datalog & Simulation\"", "0",
                                    R"([{"kind":"open","title":"Save Settings","filter":"All Files (*.txt)|*.txt"}])",
                                    "1200", "\"1200\"", "502",
                                    R"("Row 502   00:00:50   RPM 502   MAP 0   Throttle 0   Lambda 0   InjTime 0")",
                                    "\"Picture1\"", "null"));
}

TEST_F(LogScript, ALogOnTheCommandLineOpens) {
    const auto file = folder_.write("log.txt", support::numberedLog(42)).string();
    const auto values = run("get frmTrend_txt.lblMaxpoints.Caption\nget frmTrend_txt.lblLog.Caption\n", {file}, "none");
    EXPECT_THAT(values, ElementsAre("\"42\"", HasSubstr("log.txt")));
}

// A replay of two minutes, left alone, ends by itself.
TEST_F(LogScript, AReplayRunsToItsEnd) {
    const auto file = folder_.write("log.txt", support::numberedLog(1200)).string();
    const auto values =
        run("click frmTrend_txt.btnSimulate\n"
            "get frmTrend_txt.btnSimulate.Caption\n"
            "wait 200000\n"
            "get frmTrend_txt.TimerSim.Enabled\n"
            "get frmTrend_txt.btnSimulate.Caption\n"
            "get liveValues(1).value\n",
            {file}, "none");
    EXPECT_THAT(values, ElementsAre("\"STOP\"", "false", "\"STOP\"", "1199"));
}

}  // namespace
}  // namespace korvane::app
