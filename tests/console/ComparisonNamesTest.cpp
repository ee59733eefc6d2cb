#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

struct ComparisonNamesTest : testing::Test, ProgramBench {};

TEST_F(ComparisonNamesTest, AComparisonIsOpenedWithBothSides) {
    EXPECT_EQ(run("set FuelMapOut(17) 9"), "ok");
    EXPECT_EQ(run(R"(call keep.compare "maps" "maps")"), "ok");
    EXPECT_EQ(run("get frmCompare.Caption"), R"(ok "Vertailu")");
    EXPECT_EQ(run("get frmCompare.ComboLeft.ListIndex"), "ok 1");
    EXPECT_EQ(run("get frmCompare.tabWhat.Caption(1)"), "ok \"Fuel (0)\"");
    EXPECT_EQ(run("get frmCompare.grdCells.Cells"), "ok 160");
    EXPECT_EQ(run("choose frmCompare.grdCells 17"), "ok");
    EXPECT_EQ(run("get frmCompare.grdCells.SelectedItem"), "ok 17");
    EXPECT_EQ(run("get frmCompare.grdCells.Cell(17)"), run("get frmCompare.lblOne.Caption"));
    EXPECT_EQ(run("choose frmCompare.grdCells 160").substr(0, 5), "error");
}

TEST_F(ComparisonNamesTest, AnotherTextIsNoSide) {
    EXPECT_EQ(
        run(R"(call keep.compare "maps" "desk")"),
        R"(error keep.compare: "desk" is no side of a comparison: ecu, maps, tune PATH, image PATH, point NAME, point-maps NAME)");
    EXPECT_EQ(run(R"(call keep.compare "maps")").substr(0, 5), "error");
}

TEST_F(ComparisonNamesTest, TheKeyOpensItAsTheRealOneDoes) {
    EXPECT_EQ(run("click frmSarn2.btnKartat"), "ok");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 68 2"), "ok");
    EXPECT_EQ(run("get frmCompare.Visible"), "ok true");
}

}  // namespace
}  // namespace korvane::console
