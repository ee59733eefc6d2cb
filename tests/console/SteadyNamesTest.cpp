// The steady agent by its names.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

class SteadyNames : public testing::Test, public ProgramBench {
protected:
    static std::string path(std::string_view name) { return "clsSteadyAgent." + std::string(name); }
    std::string value(std::string_view name) { return run("get " + path(name)); }
};

TEST_F(SteadyNames, ItBeginsOffAndKnowsNothing) {
    EXPECT_EQ(value("State"), "ok \"off\"");
    EXPECT_EQ(value("StopReason"), "ok \"\"");
    EXPECT_EQ(value("ZoneCount"), "ok 4");
    EXPECT_EQ(value("Zone(0).LoadFrom"), "ok 0");
    EXPECT_EQ(value("Zone(3).LoadTo"), "ok 100");
    EXPECT_EQ(value("Zone(1).DelayMs"), "ok null");
    EXPECT_EQ(value("Zone(1).UncertaintyMs"), "ok null");
    EXPECT_EQ(value("Used"), "ok 0");
    EXPECT_EQ(value("Rejected(0).Reason"), "ok \"link late\"");
    EXPECT_EQ(value("Rejected(18).Count"), "ok 0");
    EXPECT_EQ(value("Cell(17).Weight"), "ok 0");
    EXPECT_EQ(value("Cell(17).ErrorPercent"), "ok 0");
    EXPECT_EQ(value("Cell(17).Spread"), "ok 0");
    EXPECT_EQ(value("Cell(17).Confidence"), "ok 0");
    EXPECT_EQ(value("Cell(319).Baseline"), "ok null");
    EXPECT_EQ(value("Cell(17).Limited"), "ok false");
}

TEST_F(SteadyNames, TheAuthorityIsSetWithinItsRange) {
    EXPECT_EQ(value("RichAuthority"), "ok 15");
    EXPECT_EQ(value("LeanAuthority"), "ok 5");
    EXPECT_EQ(run("set clsSteadyAgent.RichAuthority 12.5"), "ok");
    EXPECT_EQ(value("RichAuthority"), "ok 12.5");
    EXPECT_EQ(run("set clsSteadyAgent.LeanAuthority 0"), "ok");
    for (const auto* wrong : {"-1", "50.5"}) {
        EXPECT_EQ(run("set clsSteadyAgent.LeanAuthority " + std::string(wrong)),
                  "error clsSteadyAgent.LeanAuthority: the value must be a number from 0 to 50");
    }
    EXPECT_EQ(run("set clsSteadyAgent.LeanAuthority \"much\""),
              "error clsSteadyAgent.LeanAuthority: the value must be a number");
    EXPECT_EQ(value("LeanAuthority"), "ok 0");
}

TEST_F(SteadyNames, ADelayIsFixedForAZone) {
    EXPECT_EQ(value("Zone(2).FixedMs"), "ok 0");
    EXPECT_EQ(run("set clsSteadyAgent.Zone(2).FixedMs 150"), "ok");
    EXPECT_EQ(value("Zone(2).FixedMs"), "ok 150");
    EXPECT_EQ(run("set clsSteadyAgent.Zone(2).FixedMs 2001"),
              "error clsSteadyAgent.Zone(2).FixedMs: the value must be a number from 0 to 2000");
    EXPECT_EQ(run("set clsSteadyAgent.Carry true"), "ok");
    EXPECT_EQ(value("Carry"), "ok true");
}

TEST_F(SteadyNames, AnIndexOutOfRangeIsNamed) {
    EXPECT_EQ(value("Zone(4).DelayMs"),
              "error clsSteadyAgent.Zone(4).DelayMs does not exist: the index must be 0 to 3");
    EXPECT_EQ(value("Rejected(20).Count"),
              "error clsSteadyAgent.Rejected(20).Count does not exist: the index must be 0 to 19");
    EXPECT_EQ(value("Cell(320).Weight"),
              "error clsSteadyAgent.Cell(320).Weight does not exist: the index must be 0 to 319");
    EXPECT_EQ(run("set clsSteadyAgent.State \"working\""), "error clsSteadyAgent.State can only be read");
    EXPECT_EQ(run("set clsSteadyAgent.Cell(1).Baseline 3"), "error clsSteadyAgent.Cell(1).Baseline can only be read");
}

TEST_F(SteadyNames, TheBoxOfTheWindowSaysWhyItIsNotTicked) {
    run("set SWType 11");
    run("click frmSarn2.btnKartat");
    EXPECT_EQ(run("set frmMaps.chkInjAnal.Value 1"), "ok");
    EXPECT_EQ(run("set frmMaps.chkSteadyAgent.Value 1"), "ok");
    EXPECT_EQ(run("get frmMaps.chkSteadyAgent.Value"), "ok 0");
    EXPECT_EQ(value("State"), "ok \"stopped\"");
    EXPECT_EQ(value("StopReason"), "ok \"port closed\"");
}

TEST_F(SteadyNames, TheMapIsPutBackByAProcedureAndByTheKey) {
    run("set SWType 11");
    run("click frmSarn2.btnKartat");
    EXPECT_EQ(run("set FuelMapOut(17) 90"), "ok");
    EXPECT_EQ(run("call clsSteadyAgent.NewBaseline"), "ok \"The baseline is the map as it is now\"");
    EXPECT_EQ(run("set FuelMapOut(17) 95"), "ok");
    EXPECT_EQ(
        run("call clsSteadyAgent.PutBack"),
        "ok \"Put back to the baseline of 2026-01-05 12:00:00: 1 cell, in the program only: the port is closed\"");
    run("wait 2000");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 90");
    EXPECT_EQ(value("Cell(17).Baseline"), "ok 90");
    EXPECT_EQ(run("set FuelMapOut(17) 95"), "ok");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 119"), "ok");
    run("wait 2000");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 90");
    EXPECT_EQ(value("StopReason"), "ok \"put back by the tuner\"");
}

}  // namespace
}  // namespace korvane::console
