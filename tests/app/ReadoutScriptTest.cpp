// Big readouts and the dial's window as a script uses them, in virtual time against the virtual ECU.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

class ReadoutScript : public ScriptBench {
protected:
    ReadoutScript() {
        folder_.write("Settings_par.ini",
                      "[Par0]\nRPM\nEngine speed\n1\n0\n500\n\n[Par1]\nTempW\nWater\n1\n0\n110\n\n"
                      "[Par2]\nTempA\nAir\n1\n0\n80\n\n[Par3]\nVoltage\nBattery\n1\n0\n16\n");
    }

    [[nodiscard]] std::vector<std::string> run(const std::string& script) const {
        return repliesTo(script, "type=11,drive=idle");
    }
};

TEST_F(ReadoutScript, SeveralReadoutsAreNamedInTheOrderOfOpening) {
    const auto replies =
        run("click frmSarn2.Command6\n"
            "click frmSarn2.Command6\n"
            "click frmSarn2.Command6\n"
            "choose frmBigText#2.Combo1 1\n"
            "choose frmBigText#3.Combo1 3\n"
            "wait 200\n"
            "get frmBigText.Caption\n"  // 6
            "get frmBigText#1.Caption\n"
            "get frmBigText#2.Caption\n"
            "get frmBigText#3.Caption\n"
            "close frmBigText\n"  // 10
            "get frmBigText.Caption\n"
            "get frmBigText#2.Caption\n"
            "get frmBigText#3.Caption\n"
            "resize frmBigText#2 9000 3000\n"  // 14
            "get frmBigText#2.Label1.Width\n"
            "get frmBigText.Label1.Width\n"
            "controls frmBigText#2\n");
    ASSERT_EQ(replies.size(), 18U);
    EXPECT_EQ(replies[6], "ok \"RPM  0\"");
    EXPECT_EQ(replies[7], replies[6]);
    EXPECT_EQ(replies[8], "ok \"TempW  0\"");
    EXPECT_EQ(replies[9], "ok \"Voltage  0\"");
    EXPECT_EQ(replies[11], "ok \"TempW  0\"");
    EXPECT_EQ(replies[12], "ok \"Voltage  0\"");
    EXPECT_EQ(replies[13], "error no open window is named frmBigText#3");
    EXPECT_EQ(replies[15], "ok 5250");
    EXPECT_EQ(replies[16], "ok 7500");
    EXPECT_EQ(replies[17], "ok [\"Combo1\",\"Label1\",\"Check1\",\"Timer1\"]");
}

TEST_F(ReadoutScript, AReadoutShowsWhatTheMainWindowShowsAndRaisesTheAlarm) {
    const auto replies =
        run("click frmSarn2.btnConnect\n"
            "set frmMisc.TimerInitialGetData.Enabled false\n"
            "click frmSarn2.Command6\n"
            "wait 2000\n"
            "set frmSarn2.TimerRequestData.Enabled false\n"
            "wait 400\n"
            "get frmBigText.Label1.ForeColor\n"  // 6
            "get frmBigText.Label1.Caption\n"
            "get frmSarn2.lblValue(0).Caption\n"
            "click frmBigText.Check1\n"
            "wait 200\n"
            "get frmBigText.Label1.ForeColor\n"  // 11
            "get frmBigText.Label1.BackColor\n"
            "set frmBigText.Combo1.ListIndex -1\n"
            "wait 200\n"
            "get frmBigText.Label1.Caption\n");
    ASSERT_EQ(replies.size(), 16U);
    EXPECT_EQ(replies[6], "ok 2147483666");
    EXPECT_EQ(replies[7], replies[8]);
    EXPECT_NE(replies[7], "ok \"0\"");
    EXPECT_EQ(replies[11], "ok 255") << "an idling engine is above the limit of 500";
    EXPECT_EQ(replies[12], "ok 2147483663");
    EXPECT_EQ(replies[15], "ok \"999\"");
}

TEST_F(ReadoutScript, TheDialSweepsAndAnEndOfTheProgramClosesAll) {
    const auto replies =
        run("click frmSarn2.Command8\n"
            "controls frmMeter\n"
            "choose frmMeter.Combo1 1\n"
            "wait 9900\n"
            "get frmMeter.SarnMeter1.value\n"  // 4
            "wait 100\n"
            "get frmMeter.SarnMeter1.value\n"
            "choose frmMeter.Combo1 2\n"
            "get frmMeter.SarnMeter1.MeterType\n"  // 8
            "click frmSarn2.Command6\n"
            "close frmSarn2\n");
    ASSERT_EQ(replies.size(), 11U);
    EXPECT_EQ(replies[1], "ok [\"Combo1\",\"SarnMeter1\",\"Timer1\"]");
    EXPECT_EQ(replies[4], "ok 9900");
    EXPECT_EQ(replies[6], "ok 0");
    EXPECT_EQ(replies[8], "ok 0");
    EXPECT_EQ(replies[10], "ok");
}

}  // namespace
}  // namespace korvane::app
