// The restore points by their names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

using testing::HasSubstr;

struct KeepNames : testing::Test, ProgramBench {
    KeepNames() {
        run("set SWType 11");
        run("set FuelMapOut(17) 90");
    }
};

TEST_F(KeepNames, ThereIsNoneAtFirst) {
    EXPECT_EQ(run("get keep.count"), "ok 0");
    EXPECT_EQ(run("get keep.notice"), "ok \"\"");
    EXPECT_EQ(run("get keep(1).reason"), "error keep(1).reason: there is no restore point");
}

TEST_F(KeepNames, AddMakesOne) {
    EXPECT_EQ(run("call keep.add \"on the road\""), "ok");
    EXPECT_EQ(run("get keep.count"), "ok 1");
    EXPECT_EQ(run("get keep(1).reason"), "ok \"by hand\"");
    EXPECT_EQ(run("get keep(1).note"), "ok \"on the road\"");
    EXPECT_THAT(run("get keep(1).time"), HasSubstr(" 12:00:00\""));
    EXPECT_EQ(run("get keep(1).damage"), "ok \"\"");
    EXPECT_EQ(run("get keep(1).differs"), "ok \"unknown\"");
    EXPECT_THAT(run("get keep(1).ecu"), HasSubstr("\"type 11, version "));
    EXPECT_EQ(run("get keep(2).note"), "error keep(2).note: the last restore point is 1");
    EXPECT_EQ(run("set keep(1).note \"x\"").substr(0, 5), "error");
}

TEST_F(KeepNames, TheNewestIsOne) {
    run("call keep.add \"a\"");
    run("call keep.add \"b\"");
    EXPECT_EQ(run("get keep(1).note"), "ok \"b\"");
    EXPECT_EQ(run("get keep(2).note"), "ok \"a\"");
}

TEST_F(KeepNames, NotesAreTyped) {
    run("call keep.add");
    EXPECT_EQ(run("call keep.note 1 \"new words\""), "ok");
    EXPECT_EQ(run("get keep(1).note"), "ok \"new words\"");
    EXPECT_THAT(run("call keep.note 2 \"x\""), HasSubstr("the last restore point is 1"));
}

TEST_F(KeepNames, RemoveTakesOneAway) {
    run("call keep.add \"a\"");
    run("call keep.add \"b\"");
    EXPECT_EQ(run("call keep.remove 1"), "ok");
    EXPECT_EQ(run("get keep.count"), "ok 1");
    EXPECT_EQ(run("get keep(1).note"), "ok \"a\"");
}

TEST_F(KeepNames, RestoreBringsMapsBackAsOneStep) {
    run("call keep.add");
    run("set FuelMapOut(17) 11");
    run("set FuelMapOut(18) 12");
    run("get history.count");
    EXPECT_EQ(run("call keep.restore 1 \"fuel edited\""),
              "ok \"In the working maps now: fuel. \\\"Send\\\" brings them to the ECU.\"");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 90");
    EXPECT_EQ(run("get FuelMapOut(18)"), "ok 0");
    run("call history.undo");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 11");
    EXPECT_EQ(run("get FuelMapOut(18)"), "ok 12");
}

TEST_F(KeepNames, RestoreSaysWhatItCantBring) {
    run("call keep.add");
    EXPECT_EQ(run("call keep.restore 1 \"fuel\""), "ok \"Nothing was restored. It does not know the fuel map.\"");
    EXPECT_THAT(run("call keep.restore 1 \"all\""),
                HasSubstr("error keep.restore: the parts are fuel, ignition, pwm, settings and edited"));
    run("set SWType 14");
    EXPECT_EQ(run("call keep.restore 1 \"fuel edited\""),
              "ok \"Nothing was restored. Its maps have 160 cells, those of this ECU 320.\"");
}

TEST_F(KeepNames, OpenShowsTheWindow) {
    EXPECT_EQ(run("call keep.closeNotice"), "ok");
    EXPECT_EQ(run("call keep.open"), "ok");
    EXPECT_THAT(run("windows"), HasSubstr("frmRestore"));
    EXPECT_EQ(run("get frmRestore.Caption"), "ok \"Palautuspisteet\"");
}

TEST_F(KeepNames, TheKeyOpensTheWindow) {
    run("click frmSarn2.btnKartat");
    EXPECT_EQ(run("key frmMaps.txtFuel(17) 82 2"), "ok");
    EXPECT_THAT(run("windows"), HasSubstr("frmRestore"));
}

TEST_F(KeepNames, AWriteByAScriptMakesAPoint) {
    run("click frmSarn2.btnConnect");
    run("call WriteEE 17 5");
    EXPECT_EQ(run("get keep.count"), "ok 1");
    EXPECT_EQ(run("get keep(1).reason"), "ok \"before: EEPROM address 17\"");
}

}  // namespace
}  // namespace korvane::console
