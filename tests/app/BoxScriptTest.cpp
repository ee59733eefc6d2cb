// The windows of the ignition-only box and of the limiter box as scripts use them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class BoxScript : public ScriptBench {
protected:
    [[nodiscard]] std::vector<std::string> run(const std::string& ecu, const std::string& script) const {
        return repliesTo(script, ecu);
    }

    // The names in the reply to `controls`.
    static std::set<std::string> controlsIn(const std::string& reply) {
        std::set<std::string> names;
        for (std::size_t begin = reply.find('"'); begin != std::string::npos;) {
            const auto end = reply.find('"', begin + 1);
            names.insert(reply.substr(begin + 1, end - begin - 1));
            begin = reply.find('"', end + 1);
        }
        return names;
    }
};

TEST_F(BoxScript, AnIgnitionBoxIsReadChangedAndReadAgain) {
    const auto replies = run("type=32,drive=off",
                             "click frmSarn2.btnConnect\n"
                             "wait 25000\n"
                             "click frmSarn2.btnKartat\n"
                             "get frmMaps_QV_ign.txtLaunchControlLimit.Text\n"  // 3
                             "get frmMaps_QV_ign.Combosensortype.ListIndex\n"
                             "get ignWindowOpen\n"
                             "type frmMaps_QV_ign.txtLaunchControlLimit 5100\n"
                             "choose frmMaps_QV_ign.Combosensortype 0\n"
                             "key frmMaps_QV_ign.txtchargetime 187\n"
                             "click frmMaps_QV_ign.btnSaveLaunch\n"
                             "click frmMaps_QV_ign.btnsaveign_2\n"
                             "close frmMaps_QV_ign\n"
                             "get ignWindowOpen\n"  // 12
                             "click frmSarn2.Command2\n"
                             "wait 1000\n"
                             "click frmSarn2.btnKartat\n"
                             "get frmMaps_QV_ign.txtLaunchControlLimit.Text\n"  // 16
                             "get frmMaps_QV_ign.Combosensortype.ListIndex\n"
                             "get frmMaps_QV_ign.txtchargetime.Text\n"
                             "controls frmMaps_QV_ign\n");
    ASSERT_EQ(replies.size(), 20U);
    EXPECT_THAT(replies, Each(StartsWith("ok")));
    EXPECT_EQ(replies[3], "ok \"4500\"");
    EXPECT_EQ(replies[4], "ok 1");
    EXPECT_EQ(replies[5], "ok true");
    EXPECT_EQ(replies[12], "ok false");
    EXPECT_EQ(replies[16], "ok \"5100\"");
    EXPECT_EQ(replies[17], "ok 0");
    EXPECT_EQ(replies[18], "ok \"3.52\"");  // 176 * 0.02
    EXPECT_THAT(
        controlsIn(replies[19]),
        UnorderedElementsAre("prgTransfer", "chkOnlineChanges", "Timer1", "btnReadMisc", "btnSaveMisc", "FrameMisc",
                             "lblMisc(0..3)", "txtMisc(0..3)", "CheckMisc(0..15)", "FrameINJMaxOpen",
                             "optINJMaxOpen(0..1)", "TimeOutTimer", "FrameIgn", "txtIgn(0..159)", "lblRpmI(0..15)",
                             "lblMapI(0..9)", "btnReadIgn", "btnWriteIgn", "btnSave", "btnLoad", "btnShow3D", "btnHelp",
                             "txtLaunchControlLimit", "Combolaunchmode", "txtLaunchFixedDelay", "ComboAccellimiter",
                             "txtMaxAccel", "Combosensortype", "chkFocusOnIGN", "lblIdleAdv", "txtIdleAdv(0..4)",
                             "txtchargetime", "FrameIdleAdv", "btnReadIdleAdv", "btnSaveIdleAdv", "FrameLaunch",
                             "btnReadLaunch", "btnSaveLaunch", "FrameIgn2", "btnreadign_2", "btnsaveign_2"));
}

TEST_F(BoxScript, ALimiterIsReadChangedAndReadAgain) {
    const auto replies = run("type=112,drive=off",
                             "click frmSarn2.btnConnect\n"
                             "wait 25000\n"
                             "click frmSarn2.btnKartat\n"
                             "wait 4000\n"
                             "get frmMaps_ign_limiter.txtrpmlimitHIGH.Text\n"  // 4
                             "get frmMaps_ign_limiter.Caption\n"
                             "type frmMaps_ign_limiter.txtrpmlimitHIGH 6800\n"
                             "key frmMaps_ign_limiter.txtInputvolt(2) 189\n"
                             "choose frmMaps_ign_limiter.comboInputFuncHi(0) 5\n"
                             "click frmMaps_ign_limiter.btnSendSettings\n"
                             "get frmMaps_ign_limiter.Caption\n"  // 10
                             "wait 1000\n"
                             "get frmSarn2.Caption\n"
                             "close frmMaps_ign_limiter\n"
                             "click frmSarn2.btnKartat\n"
                             "wait 4000\n"
                             "get frmMaps_ign_limiter.txtrpmlimitHIGH.Text\n"  // 16
                             "get frmMaps_ign_limiter.txtInputvolt(2).Text\n"
                             "get frmMaps_ign_limiter.comboInputFuncHi(0).ListIndex\n"
                             "controls frmMaps_ign_limiter\n");
    ASSERT_EQ(replies.size(), 20U);
    EXPECT_THAT(replies, Each(StartsWith("ok")));
    EXPECT_EQ(replies[4], "ok \"7200\"");
    EXPECT_EQ(replies[5], "ok \"Receiving data from target device!:  Received 100%\"");
    EXPECT_EQ(replies[10], "ok \"Data sent and stored to device.\"");
    EXPECT_THAT(replies[12], StartsWith("ok \"Korvane Tuner v1.3 by Dulmer,   Device started "));
    EXPECT_EQ(replies[16], "ok \"6800\"");
    EXPECT_EQ(replies[17], "ok \"3.98\"");  // 199 * 0.02
    EXPECT_EQ(replies[18], "ok 5");
    EXPECT_THAT(controlsIn(replies[19]),
                UnorderedElementsAre("txtLaunchControlLimit", "Combolaunchmode", "txtLaunchFixedDelay",
                                     "ComboAccellimiter", "txtMaxAccel", "Combosensortype", "btnReadData",
                                     "btnSendSettings", "btnHelp", "FrameRpmSensor", "txtSigPerRev", "txtCylCount",
                                     "FrameRpmLimit", "txtrpmlimitLOW", "txtrpmlimitLOWpre", "txtrpmlimitHIGH",
                                     "txtrpmlimitHIGHpre", "FrameInput(0..2)", "ComboInputCompare(0..2)",
                                     "txtInputvolt(0..2)", "ComboInputFuncLow(0..6)", "comboInputFuncHi(0..2)",
                                     "txtInputFuncVal(0..2)", "lblInput1", "lblInput2", "lblInput3", "TimerinitialRead",
                                     "Timer1", "TimeOutTimer", "FrameLaunch", "btnReadLaunch", "btnSaveLaunch"));
}

// What the limiter's window asks for and does not show itself.
TEST_F(BoxScript, TheSettingsWindowShowsWhatTheLimiterKeepsToItself) {
    const auto replies = run("type=112,drive=off",
                             "click frmSarn2.btnConnect\n"
                             "wait 25000\n"
                             "click frmSarn2.btnKartat\n"
                             "wait 4000\n"
                             "type frmMaps_ign_limiter.txtLaunchControlLimit 5100\n"  // 4
                             "choose frmMaps_ign_limiter.Combolaunchmode 4\n"
                             "click frmMaps_ign_limiter.btnSaveLaunch\n"
                             "choose frmMaps_ign_limiter.Combosensortype 1\n"
                             "click frmMaps_ign_limiter.btnSendSettings\n"
                             "close frmMaps_ign_limiter\n"
                             "wait 1000\n"
                             "click frmSarn2.Command7\n"
                             "wait 4000\n"
                             "click frmMaps_ign_limiter.btnReadLaunch\n"
                             "get frmMaps_ign_limiter.txtLaunchControlLimit.Text\n"  // 14
                             "get frmMaps_ign_limiter.Combolaunchmode.ListIndex\n"
                             "get frmMisc.txtLaunchcontrol.Text\n"  // 16
                             "get frmMisc.Combolaunchmode.ListIndex\n"
                             "get EEParams(346).value\n"  // 18
                             "get EEParams(511).value\n"
                             "get EEParams(512).value\n");
    ASSERT_EQ(replies.size(), 21U);
    EXPECT_THAT(replies, Each(StartsWith("ok")));
    EXPECT_EQ(replies[14], "ok \"\"");
    EXPECT_EQ(replies[15], "ok 0");
    EXPECT_EQ(replies[16], "ok \"5100\"");
    EXPECT_EQ(replies[17], "ok 4");
    EXPECT_EQ(replies[18], "ok 1");
    EXPECT_EQ(replies[19], "ok 236");  // 5100 is 19 * 256 + 236
    EXPECT_EQ(replies[20], "ok 19");
}

// Bad input, a port that closes in the middle, windows that close in the middle.
TEST_F(BoxScript, MisuseIsAnsweredAndSurvived) {
    const auto replies = run("type=112,drive=off",
                             "click frmSarn2.btnConnect\n"
                             "wait 25000\n"
                             "click frmSarn2.btnKartat\n"
                             "at 200 close frmMaps_ign_limiter\n"
                             "wait 1000\n"
                             "get frmMaps_ign_limiter.Caption\n"  // 5
                             "click frmSarn2.Command7\n"
                             "wait 4000\n"
                             "type frmMaps_ign_limiter.txtCylCount 99999999999\n"
                             "at 700 click frmSarn2.btnConnect\n"
                             "click frmMaps_ign_limiter.btnSendSettings\n"
                             "messages\n"  // 11
                             "choose frmMaps_ign_limiter.ComboInputFuncLow(0) 7\n"
                             "type frmMaps_ign_limiter.txtCylCount zwei\n"
                             "click frmMaps_ign_limiter.btnSendSettings\n"
                             "get frmMaps_ign_limiter.Caption\n");
    ASSERT_EQ(replies.size(), 16U);
    EXPECT_THAT(replies[5], StartsWith("error"));
    EXPECT_THAT(replies[11], HasSubstr("from 0 to 65535"));
    EXPECT_THAT(replies[12], StartsWith("error"));
    EXPECT_EQ(replies[15], "ok \"Data sent and stored to device.\"");
}

}  // namespace
}  // namespace korvane::app
