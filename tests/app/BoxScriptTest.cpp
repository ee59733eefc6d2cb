// The windows of the ignition-only box and of the limiter box as scripts use them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class BoxScript : public testing::Test {
protected:
    // The replies to a script in virtual time against the virtual ECU.
    std::vector<std::string> run(const std::string& ecu, const std::string& script) {
        folder_.write("Settings_par.ini", "");
        const auto outcome =
            runProgram("korvane-tuner",
                       {"--headless", "--virtual-time", "--folder", folder_.path().string(), "--ecu", ecu}, script);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return linesOf(outcome.output);
    }

    support::TempFolder folder_;
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
    for (const char* other : {"txtFuel", "txtPWM", "txtInjAnalys", "chkTrace", "TimerInitialGetData"}) {
        EXPECT_THAT(replies[19], Not(HasSubstr(other)));
    }
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
    for (const char* other : {"txtFuel", "txtIgn", "txtPWM", "txtMisc", "lblRpm", "lblMap"}) {
        EXPECT_THAT(replies[19], Not(HasSubstr(other)));
    }
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
