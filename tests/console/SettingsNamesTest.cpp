// The settings window's members and procedure by their names.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

class SettingsNames : public testing::Test, public ProgramBench {
protected:
    SettingsNames() {
        program->frmMisc().load();
        program->frmMisc().TimerInitialGetData.Enabled = false;
    }
};

TEST_F(SettingsNames, UpdateReadEEFillsTheFieldOfItsAddress) {
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 17 540"), "ok");
    EXPECT_EQ(run("get frmMisc.txtBoostTav(0).Text"), "ok \"17\"");
    EXPECT_EQ(run("get EEImage(540)"), "ok 17");
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 300 540 true"), "ok");
    EXPECT_EQ(run("get frmMisc.txtBoostTav(0).Text"), "ok \"300\"");
    EXPECT_EQ(run("get EEImage(540)"), "ok 17");
    EXPECT_TRUE(run("call frmMisc.UpdateReadEE 17").starts_with("error"));
}

TEST_F(SettingsNames, ItsMembersHaveTheirNames) {
    program->frmMisc().TimeOutCount = 3;
    EXPECT_EQ(run("get frmMisc.TimeOutCount"), "ok 3");
    EXPECT_EQ(run("call frmMisc.UpdateReadEE 1 518"), "ok");
    EXPECT_EQ(run("get frmMisc.LambdaType"), "ok 1");
    EXPECT_EQ(run("get frmMisc.optLambdaType(0).Value"), "ok true");
}

}  // namespace
}  // namespace korvane::console
