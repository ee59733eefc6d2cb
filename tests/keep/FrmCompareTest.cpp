#include <gmock/gmock.h>

#include "core/files/SettingsFile.h"
#include "keep/compare/FrmCompare.h"
#include "keep/point/PointStore.h"
#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using support::Bytes;
using testing::HasSubstr;
using testing::IsEmpty;

// The whole program with an ECU of ordinary maps, all fuel cells at 50, all ignition cells at 60.
class FrmCompareTest : public testing::Test {
protected:
    void connect() {
        program_.connect();
        program_.receiveFrame('y', {0xFF, 0xFF, 0x0D, 0x3A, 11});
        program_.receiveFrame('f', Bytes(160, 50));
        program_.receiveFrame('a', Bytes(160, 60));
        static_cast<void>(program_.sent());
    }
    FrmCompare& open() {
        program_.program.comparisons().open();
        return shown();
    }
    FrmCompare& open(const std::string& left, const std::string& right) {
        program_.program.comparisons().open(sourceOf(left), sourceOf(right));
        return shown();
    }
    FrmCompare& shown() {
        for (auto* window : program_.windows.loaded()) {
            if (auto* const found = dynamic_cast<FrmCompare*>(window)) {
                return *found;
            }
        }
        throw std::runtime_error("frmCompare is not open");
    }
    void setDesk(std::size_t cell, std::uint8_t byte) { program_.tables.FuelMapOut.at(cell) = byte; }
    // A settings file of what the tables have now.
    std::string saved(std::int16_t size = 160) {
        const auto path = program_.folder / "tune.txt";
        core::SaveSettingsFile(path, program_.tables, size, program_.dialogs);
        return path.string();
    }
    [[nodiscard]] std::string summary() { return shown().lblSummary.Caption; }

    support::VirtualProgram program_;
};

TEST_F(FrmCompareTest, OpensWithTheEcuAndTheWorkingMaps) {
    connect();
    setDesk(17, 53);
    auto& window = open();
    EXPECT_TRUE(window.Visible);
    EXPECT_EQ(window.left.list.Text(), "ECU, as last received");
    EXPECT_EQ(window.right.list.Text(), "Working maps");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
    EXPECT_EQ(window.tabWhat.tabCaption(2), "Ignition (0)");
    EXPECT_EQ(window.grdCells.cells().at(17).sign, Sign::Up);
    EXPECT_THAT(program_.sent(), IsEmpty());
}

TEST_F(FrmCompareTest, ComparesRestorePoints) {
    connect();
    PointStore store(program_.folder / "points");
    auto snapshot = snapshotOf(program_.tables, program_.window, {}, {2026, 5, 6, 7, 8, 9});
    snapshot.reason = "before fuel map";
    snapshot.fuel.edited[17] = 70;
    const auto older = store.add(snapshot).name;
    program_.program.comparisons().usePoints(store);
    setDesk(18, 53);
    auto& window = open();
    window.left.list.choose(4);
    EXPECT_TRUE(window.left.points.Visible);
    EXPECT_EQ(window.left.points.Text(), "2026-05-06 07:08:09, before fuel map");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
    window.left.list.choose(5);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (2)");
    snapshot.time.second = 10;
    snapshot.fuel.working[20] = 1;
    EXPECT_EQ(store.add(snapshot).failure, "");
    window.compare(sourceOf("point " + older), sourceOf("ecu"));
    EXPECT_EQ(window.left.points.ListIndex, 1);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (0)");
    window.left.points.choose(0);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
}

TEST_F(FrmCompareTest, ARestorePointThatCanNotBeReadFillsNoTable) {
    connect();
    PointStore store(program_.folder / "points");
    program_.program.comparisons().usePoints(store);
    auto& window = open("point none", "maps");
    EXPECT_THAT(window.left.words.Caption.get(), HasSubstr("The restore point can't be read: "));
    EXPECT_THAT(window.grdCells.cells(), IsEmpty());
    window.compare(sourceOf("ecu"), sourceOf("maps"));
    window.left.list.choose(4);
    EXPECT_EQ(window.left.words.Caption.get(), "There is no restore point yet.");
}

TEST_F(FrmCompareTest, SaysThatNoEcuWasRead) {
    auto& window = open();
    EXPECT_EQ(window.left.words.Caption.get(), "No ECU has been read yet.");
    EXPECT_EQ(window.right.words.Caption.get(), "No map has been read or loaded yet: all cells are 0.");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (0)");
    EXPECT_FALSE(window.btnCopyMap.Enabled);
}

TEST_F(FrmCompareTest, BehindAnotherConnectItSaysThatNothingHasBeenReadSince) {
    connect();
    program_.receiveFrame('f', Bytes(160, 51));
    auto& window = open();
    program_.connect();
    program_.connect();
    program_.pump.wait(500);
    EXPECT_EQ(window.left.words.Caption.get(), "Nothing has been read since the last connect or restart.");
}

TEST_F(FrmCompareTest, FollowsTheWorkingMapsAndTheEcu) {
    connect();
    auto& window = open();
    setDesk(17, 53);
    program_.pump.wait(500);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
    program_.receiveFrame('f', Bytes(160, 51));
    program_.pump.wait(500);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (0)");
}

TEST_F(FrmCompareTest, ShowsWhatTheChosenCellHas) {
    connect();
    setDesk(17, 53);
    auto& window = open();
    window.grdCells.choose(17);
    EXPECT_THAT(window.lblOne.Caption.get(), HasSubstr("(50), right"));
    EXPECT_THAT(window.lblOne.Caption.get(), HasSubstr("(+3)"));
    window.tabWhat.choose(2);
    EXPECT_THAT(window.lblOne.Caption.get(), HasSubstr("Ignition, 1500 RPM, 10-20 %: left 12 degrees (60)"));
}

TEST_F(FrmCompareTest, CopiesACellToTheWorkingMapsAndSendsNothing) {
    connect();
    setDesk(17, 53);
    setDesk(18, 53);
    auto& window = open();
    EXPECT_FALSE(window.btnCopyOne.Enabled);
    window.grdCells.choose(17);
    window.btnCopyOne.press();
    EXPECT_EQ(program_.tables.FuelMapOut[17], 50);
    EXPECT_EQ(program_.tables.FuelMapOut[18], 53);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
    EXPECT_THAT(program_.sent(), IsEmpty());
}

TEST_F(FrmCompareTest, WhatWasCopiedIsOneStepThatAnOpenMapWindowShowsAndCanUndo) {
    connect();
    program_.program.mapWindows().open();
    auto& maps = dynamic_cast<maps::MapForm&>(*program_.windows.loaded().back());
    program_.pump.wait(5000);
    for (std::size_t cell = 0; cell < 160; ++cell) {
        setDesk(cell, 90);
    }
    maps.populateFuelOUT();
    const auto edited = maps.fuel(17).Text.get();
    const auto before = program_.program.history().count();
    auto& window = open();
    window.btnCopyMap.press();
    EXPECT_EQ(program_.tables.FuelMapOut[17], 50);
    EXPECT_NE(maps.fuel(17).Text.get(), edited);
    EXPECT_THAT(program_.program.history().step(program_.program.history().count()).words(),
                HasSubstr("copied from a comparison"));
    window.grdCells.keyDown(90, controls::kControlMask);
    EXPECT_EQ(program_.tables.FuelMapOut[17], 90);
    EXPECT_EQ(maps.fuel(17).Text.get(), edited);
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (160)");
    EXPECT_GT(program_.program.history().count(), before);
}

TEST_F(FrmCompareTest, OpensByControlAndDInTheMainAndTheMapWindows) {
    program_.program.mapWindows().open();
    auto& maps = dynamic_cast<maps::MapForm&>(*program_.windows.loaded().back());
    maps.fuel(17).keyDown(68, controls::kControlMask);
    EXPECT_TRUE(shown().Visible);
    static_cast<void>(shown().unload());
    program_.window.btnConnect.keyDown(68, 0);
    EXPECT_THROW(static_cast<void>(shown()), std::runtime_error);
    program_.window.btnConnect.keyDown(68, controls::kControlMask);
    EXPECT_TRUE(shown().Visible);
}

TEST_F(FrmCompareTest, CopiesAMapAndLeavesTheCellsThatTheLeftSideDoesNotKnow) {
    connect();
    auto& tables = program_.tables;
    tables.PwmMapOut.fill(9);
    program_.receiveFrame('p', {70, 5});
    tables.PwmMapOut[70] = 9;
    auto& window = open();
    window.tabWhat.choose(3);
    window.btnCopyMap.press();
    EXPECT_EQ(tables.PwmMapOut[70], 5);
    EXPECT_EQ(tables.PwmMapOut[71], 9);
}

TEST_F(FrmCompareTest, CopiesOnlyToTheWorkingMaps) {
    connect();
    setDesk(17, 53);
    auto& window = open("maps", "ecu");
    window.grdCells.choose(17);
    EXPECT_FALSE(window.btnCopyOne.Enabled);
    EXPECT_FALSE(window.btnCopyMap.Enabled);
}

TEST_F(FrmCompareTest, AFileIsAskedForAndTheOldSourceStaysIfThereIsNone) {
    connect();
    setDesk(17, 53);
    const auto path = saved();
    setDesk(17, 50);
    auto& window = open();
    window.left.list.choose(2);
    EXPECT_EQ(window.left.list.Text(), "ECU, as last received");
    program_.dialogs.answerFile(path);
    window.left.list.choose(2);
    EXPECT_EQ(window.left.list.Text(), "Tune file");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel (1)");
    EXPECT_TRUE(window.left.file.Visible);
    EXPECT_EQ(program_.tables.FuelMapIn[17], 50);
}

TEST_F(FrmCompareTest, AFileThatCanNotBeReadFillsNoTable) {
    connect();
    setDesk(17, 53);
    const auto bad = program_.folder.write("bad.txt", "Injection\r\n 1  2 ");
    auto& window = open();
    window.compare(sourceOf("tune " + bad.string()), sourceOf("maps"));
    EXPECT_EQ(window.left.words.Caption.get(), "bad.txt: no tune file (Not valid settings file).");
    EXPECT_THAT(window.grdCells.cells(), IsEmpty());
    EXPECT_EQ(summary(), "Nothing is compared: a side can't be read.");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel");
    EXPECT_EQ(window.tabWhat.tabCaption(4), "Settings");
    EXPECT_FALSE(window.btnExport.Enabled);
    EXPECT_EQ(program_.dialogs.takeMessages().size(), 0U);
}

TEST_F(FrmCompareTest, ALargeMapIsNotComparedWithAnOrdinaryOne) {
    connect();
    const auto path = saved(320);
    auto& window = open("tune " + path, "maps");
    EXPECT_EQ(window.tabWhat.tabCaption(1), "Fuel");
    EXPECT_THAT(summary(), HasSubstr("the left map has 320 cells, the right one 160"));
    EXPECT_THAT(window.grdCells.cells(), IsEmpty());
    EXPECT_FALSE(window.btnCopyMap.Enabled);
}

// MINTHR_OFF, 365, which no box stores, and ACCEL_DELAY_OFF, 14, which has one.
TEST_F(FrmCompareTest, SettingsAreListedByNameAndOnlyThoseThatDiffer) {
    connect();
    program_.receiveFrame('T', {40, 14, 0});
    program_.program.frmMisc().settings().put(30, 14);
    auto& window = open();
    window.tabWhat.choose(4);
    ASSERT_EQ(window.lstSettings.rowCount(), 1);
    EXPECT_EQ(window.lstSettings.Cell(1, 2), "ACCEL_DELAY_OFF");
    EXPECT_EQ(window.lstSettings.Cell(1, 3), "40");
    EXPECT_EQ(window.lstSettings.Cell(1, 4), "30");
    EXPECT_THAT(window.lstSettings.Cell(1, 5), HasSubstr("-10"));
    EXPECT_EQ(window.lstSettings.Cell(1, 6), "14");
    EXPECT_EQ(window.tabWhat.tabCaption(4), "Settings (1)");
}

TEST_F(FrmCompareTest, ShowAllListsWhatIsEqualOrKnownOnOneSideOnly) {
    connect();
    program_.receiveFrame('T', {7, 365 & 0xFF, 365 >> 8});
    auto& window = open();
    window.tabWhat.choose(4);
    EXPECT_EQ(window.lstSettings.rowCount(), 0);
    window.chkAll.press();
    const auto& list = window.lstSettings;
    bool found = false;
    for (int row = 1; row <= list.rowCount(); ++row) {
        if (list.Cell(row, 2) == "MINTHR_OFF") {
            found = true;
            EXPECT_EQ(list.Cell(row, 3), "7");
            EXPECT_EQ(list.Cell(row, 4), "not known");
            EXPECT_EQ(list.Cell(row, 5), "");
        }
    }
    EXPECT_TRUE(found);
}

TEST_F(FrmCompareTest, ASettingIsCopiedIntoItsBoxAndNotSent) {
    connect();
    program_.receiveFrame('T', {40, 14, 0});
    program_.program.frmMisc().settings().put(30, 14);
    const auto image = program_.tables.EEImage;
    auto& window = open();
    window.tabWhat.choose(4);
    window.lstSettings.choose(1);
    EXPECT_TRUE(window.btnCopyOne.Enabled);
    window.btnCopyOne.press();
    EXPECT_EQ(program_.program.frmMisc().txtAccelDelay.Text.get(), "40");
    EXPECT_EQ(window.lstSettings.rowCount(), 0);
    EXPECT_EQ(program_.tables.EEImage, image);
    EXPECT_THAT(summary(), HasSubstr("Nothing was sent"));
    EXPECT_THAT(program_.sent(), IsEmpty());
}

TEST_F(FrmCompareTest, ASettingWithoutABoxIsNotCopied) {
    connect();
    program_.receiveFrame('T', {7, 365 & 0xFF, 365 >> 8});
    auto& window = open();
    window.tabWhat.choose(4);
    window.chkAll.press();
    for (int row = 1; row <= window.lstSettings.rowCount(); ++row) {
        if (window.lstSettings.Cell(row, 2) == "MINTHR_OFF") {
            window.lstSettings.choose(row);
        }
    }
    window.btnCopyOne.press();
    EXPECT_EQ(summary(), "No box of the settings window has MINTHR_OFF: nothing was copied.");
}

TEST_F(FrmCompareTest, AValueOfTheMiscBlockIsNotCopiedAndItIsSaidWhereItsBoxIs) {
    connect();
    program_.receiveFrame('m', Bytes(9, 5));
    auto& window = open();
    window.tabWhat.choose(4);
    window.chkAll.press();
    for (int row = 1; row <= window.lstSettings.rowCount(); ++row) {
        if (window.lstSettings.Cell(row, 1) == "RPM limit") {
            window.lstSettings.choose(row);
        }
    }
    EXPECT_FALSE(window.btnCopyOne.Enabled);
    EXPECT_THAT(window.lblOne.Caption.get(), HasSubstr("RPM limit: left "));
    EXPECT_THAT(
        window.lblOne.Caption.get(),
        testing::EndsWith(". A value of the misc block is not copied: the boxes of the map window have it, with "
                          "\"Send Misc\"."));
    window.compare({Source::Kind::Desk, {}}, {Source::Kind::Ecu, {}});
    EXPECT_THAT(window.lblOne.Caption.get(), testing::Not(HasSubstr("Send Misc")));
}

// 5 + 256 * 5 is 1285.
TEST_F(FrmCompareTest, TheWorkingMapsHaveTheMiscBlockOfTheBoxes) {
    connect();
    program_.program.mapWindows().open();
    auto& form = dynamic_cast<maps::FrmMaps&>(*program_.windows.loaded().back());
    program_.pump.wait(5000);
    auto& window = open();
    window.tabWhat.choose(4);
    window.chkAll.press();
    program_.receiveFrame('m', Bytes(9, 5));
    form.txtMisc(0).Text = "7000";
    program_.pump.wait(1000);
    std::string right;
    for (int row = 1; row <= window.lstSettings.rowCount(); ++row) {
        if (window.lstSettings.Cell(row, 1) == "RPM limit") {
            EXPECT_EQ(window.lstSettings.Cell(row, 3), "1285");
            right = window.lstSettings.Cell(row, 4);
        }
    }
    EXPECT_EQ(right, "7000");
    EXPECT_EQ(window.tabWhat.tabCaption(4), "Settings (1)");
}

TEST_F(FrmCompareTest, EditsThatAWholeMapReplacesAreInAPoint) {
    connect();
    program_.receiveFrame('m', Bytes(9, 5));
    setDesk(17, 99);
    auto& window = open();
    window.btnCopyMap.press();
    EXPECT_EQ(program_.tables.FuelMapOut[17], 50);
    auto& keeper = program_.program.keeper();
    keeper.refresh();
    ASSERT_EQ(keeper.points().size(), 1U);
    EXPECT_EQ(keeper.points()[0].reason, "before: map copied");
    EXPECT_EQ(keeper.load(keeper.points()[0].name).content->fuel.edited[17], 99);
}

TEST_F(FrmCompareTest, IsExportedAsText) {
    connect();
    setDesk(17, 53);
    auto& window = open();
    program_.dialogs.answerFile((program_.folder / "diff.txt").string());
    window.btnExport.press();
    const auto text = program_.folder.read("diff.txt");
    EXPECT_THAT(text, HasSubstr("Left:  ECU (No setting has been read yet.)\r\n"));
    EXPECT_THAT(text, HasSubstr("Fuel: 1 of 160 cells differ"));
    EXPECT_THAT(summary(), HasSubstr("Exported to"));
}

TEST_F(FrmCompareTest, AnExportThatFailsSaysWhy) {
    auto& window = open();
    program_.dialogs.answerFile((program_.folder / "missing" / "diff.txt").string());
    window.btnExport.press();
    EXPECT_THAT(summary(), HasSubstr("The comparison can't be written: "));
}

TEST_F(FrmCompareTest, IsOneWindowMadeAnewForEachOpening) {
    open().chkCounts.press();
    EXPECT_EQ(&open(), &shown());
    EXPECT_EQ(shown().chkCounts.Value, 1);
    static_cast<void>(shown().unload());
    EXPECT_EQ(open().chkCounts.Value, 0);
}

TEST(Sources, AreWrittenAsWords) {
    EXPECT_EQ(sourceOf("ecu"), (Source{Source::Kind::Ecu, ""}));
    EXPECT_EQ(sourceOf("maps"), (Source{Source::Kind::Desk, ""}));
    EXPECT_EQ(sourceOf("tune a b.txt"), (Source{Source::Kind::Tune, "a b.txt"}));
    EXPECT_EQ(sourceOf("point x"), (Source{Source::Kind::PointEcu, "x"}));
    EXPECT_EQ(sourceOf("point-maps x"), (Source{Source::Kind::PointDesk, "x"}));
    for (const char* text : {"", "tune", "ecu 1", "desk", "tunes x"}) {
        EXPECT_THROW(static_cast<void>(sourceOf(text)), platform::RuntimeError) << text;
    }
}

}  // namespace
}  // namespace korvane::keep
