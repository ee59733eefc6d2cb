// The history of the working maps, by its names and by the keys of a map window.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

struct HistoryNames : testing::Test, ProgramBench {
    HistoryNames() {
        run("set SWType 11");
        run("set Features 65535");
        run("click frmSarn2.btnKartat");
    }
};

TEST_F(HistoryNames, ControlAndZIsTheWindowsOnTheConsoleAsWell) {
    EXPECT_EQ(run("set FuelMapOut(17) 90"), "ok");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 187"), "ok");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 91");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 90 2"), "ok");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 90");
    EXPECT_EQ(run("get frmMaps.HistoryNote"), "ok \"Undone: Fuel: cell 18 from 90 to 91\"");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 89 2"), "ok");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 91");
}

TEST_F(HistoryNames, StepsAreReadByNumber) {
    EXPECT_EQ(run("get history.count"), "ok 0");
    EXPECT_EQ(run("set FuelMapOut(3) 7"), "ok");
    EXPECT_EQ(run("get history.count"), "ok 1");
    EXPECT_EQ(run("get history.place"), "ok 1");
    EXPECT_EQ(run("get history(1).text"), "ok \"Fuel: changed by a script, 1 cell\"");
    EXPECT_EQ(run("get history(1).time"), "ok \"12:00:00\"");
    EXPECT_EQ(run("get history(2).text"), "error history(2).text: the last step is 1");
    EXPECT_EQ(run("set history.place 0").substr(0, 5), "error");
}

TEST_F(HistoryNames, ProceduresWalk) {
    run("set FuelMapOut(3) 7");
    run("get history.count");
    run("set FuelMapOut(4) 8");
    EXPECT_EQ(run("call history.undo"), "ok \"Undone: Fuel: changed by a script, 1 cell\"");
    EXPECT_EQ(run("get FuelMapOut(4)"), "ok 0");
    EXPECT_EQ(run("call history.redo"), "ok \"Done again: Fuel: changed by a script, 1 cell\"");
    EXPECT_EQ(run("call history.goTo 0"), "ok \"Before the first step\"");
    EXPECT_EQ(run("get FuelMapOut(3)"), "ok 0");
    EXPECT_EQ(run("get history.place"), "ok 0");
    EXPECT_EQ(run("get history.count"), "ok 2");
    EXPECT_EQ(run("call history.goTo 3"), "error history.goTo: the last step is 2");
    EXPECT_EQ(run("call history.undo"), "ok \"Nothing to undo\"");
}

TEST_F(HistoryNames, TheListIsAWindowLikeOthers) {
    run("set FuelMapOut(3) 7");
    EXPECT_EQ(run("call history.show"), "ok");
    EXPECT_EQ(run("get frmHistory.lstSteps.ListCount"), "ok 2");
    EXPECT_EQ(run("get frmHistory.lstSteps.List(1)"), "ok \"12:00:00 Fuel: changed by a script, 1 cell\"");
    EXPECT_EQ(run("choose frmHistory.lstSteps 0"), "ok");
    EXPECT_EQ(run("get frmHistory.lstSteps.ListIndex"), "ok 0");
    EXPECT_EQ(run("get FuelMapOut(3)"), "ok 0");
    EXPECT_EQ(run("click frmHistory.btnRedo"), "ok");
    EXPECT_EQ(run("get FuelMapOut(3)"), "ok 7");
    EXPECT_EQ(run("choose frmHistory.lstSteps 2").substr(0, 5), "error");
    EXPECT_EQ(run("key frmHistory.lstSteps 90 2"), "ok");
    EXPECT_EQ(run("get FuelMapOut(3)"), "ok 0");
}

TEST_F(HistoryNames, OldWindowsListNoNewControls) {
    EXPECT_EQ(run("controls frmMaps").find("istory"), std::string::npos);
}

}  // namespace
}  // namespace korvane::console
