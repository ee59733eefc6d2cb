#include <gmock/gmock.h>

#include "CellEcu.h"
#include "core/history/MapHistory.h"
#include "keep/PointSamples.h"
#include "keep/restore/FrmRestore.h"
#include "support/FileSizeLimit.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct FrmRestoreTest : testing::Test, support::VirtualProgram {
    FrmRestoreTest() {
        tables.SWType = 11;
        tables.HwVersion = 3.386F;
    }
    std::string put(int second, const char* reason) {
        auto point = fullPoint();
        point.time.second = second;
        point.reason = reason;
        return PointStore(folder / "restore").add(point).name;
    }
    // The clock of files stands between two looks at it.
    void touch(int seconds) {
        const auto points = folder / "restore";
        std::filesystem::last_write_time(points,
                                         std::filesystem::last_write_time(points) + std::chrono::seconds(seconds));
    }
    FrmRestore& open() {
        program.restorePoints().open();
        return dynamic_cast<FrmRestore&>(*windows.loaded().back());
    }
    static std::vector<std::string> reasons(const FrmRestore& form) {
        std::vector<std::string> reasons;
        for (int row = 0; row < form.lstPoints.rowCount(); ++row) {
            reasons.push_back(form.lstPoints.entry(row).reason);
        }
        return reasons;
    }
};

TEST_F(FrmRestoreTest, ListsThePoints) {
    put(1, "maps read");
    put(2, "before: fuel map");
    auto& form = open();
    EXPECT_THAT(reasons(form), ElementsAre("before: fuel map", "maps read"));
    EXPECT_EQ(form.lblCount.Caption.get(), "2 restore points");
    EXPECT_EQ(form.lblPoint.Caption.get(), "");
    for (const auto* button : {&form.btnRestore, &form.btnDelete, &form.btnNote, &form.btnExportTune}) {
        EXPECT_FALSE(button->Enabled);
    }
}

TEST_F(FrmRestoreTest, FiltersByAllWords) {
    put(1, "maps read");
    put(2, "before: Fuel map");
    auto& form = open();
    form.txtFilter.Text = "MAP fuel";
    EXPECT_THAT(reasons(form), ElementsAre("before: Fuel map"));
    EXPECT_EQ(form.lblCount.Caption.get(), "1 of 2 restore points");
    form.txtFilter.Text = "map fuel ignition";
    EXPECT_THAT(reasons(form), IsEmpty());
    form.txtFilter.Text = "  ";
    EXPECT_EQ(reasons(form).size(), 2U);
    form.txtFilter.Text = "2026-05-06 type 11";
    EXPECT_EQ(reasons(form).size(), 2U);
}

TEST_F(FrmRestoreTest, AFilterKeepsThePickedPoint) {
    put(1, "maps read");
    put(2, "before: fuel map");
    auto& form = open();
    form.lstPoints.choose(1);
    form.txtFilter.Text = "read";
    EXPECT_EQ(form.lstPoints.ListIndex, 0);
    EXPECT_THAT(form.lblPoint.Caption.get(), HasSubstr("maps read"));
    form.txtFilter.Text = "before";
    EXPECT_EQ(form.lstPoints.ListIndex, -1);
    EXPECT_FALSE(form.btnRestore.Enabled);
}

TEST_F(FrmRestoreTest, SaysHowManyCellsDiffer) {
    put(1, "maps read");
    auto& form = open();
    EXPECT_EQ(form.lstPoints.differsText(0), "unknown");
    connect();
    receiveFrame('T', {11 * 5, 11, 0});
    pump.wait(600);
    EXPECT_EQ(form.lstPoints.differsText(0), "0");
    receiveFrame('T', {1, 12, 0});
    pump.wait(600);
    EXPECT_EQ(form.lstPoints.differsText(0), "1");
    tables.SWType = 13;
    pump.wait(600);
    EXPECT_EQ(form.lstPoints.differsText(0), "other ECU");
}

TEST_F(FrmRestoreTest, ADamagedPointCanOnlyBeNotedAndDeleted) {
    folder.write(("restore/" + put(1, "maps read")), "KVPOINT");
    auto& form = open();
    form.lstPoints.choose(0);
    EXPECT_THAT(form.lblPoint.Caption.get(), HasSubstr(".point: cut off"));
    EXPECT_FALSE(form.btnRestore.Enabled);
    EXPECT_FALSE(form.btnExportTune.Enabled);
    EXPECT_FALSE(form.chkFuel.Enabled);
    form.btnDelete.press();
    EXPECT_THAT(reasons(form), IsEmpty());
}

TEST_F(FrmRestoreTest, KeepsANote) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    form.txtNote.Text = "on the road";
    form.btnNote.press();
    EXPECT_EQ(form.lstPoints.entry(0).note, "on the road");
    EXPECT_EQ(form.lblState.Caption.get(), "The note was kept.");
    form.txtFilter.Text = "road";
    EXPECT_EQ(form.lstPoints.rowCount(), 1);
}

TEST_F(FrmRestoreTest, MakesAPoint) {
    auto& form = open();
    form.btnMake.press();
    EXPECT_THAT(reasons(form), ElementsAre("by hand"));
    EXPECT_EQ(form.lblState.Caption.get(), "A restore point was made.");
}

TEST_F(FrmRestoreTest, BringsChosenMapsBackAsOneStep) {
    put(1, "maps read");
    auto& form = open();
    tables.FuelMapOut.fill(1);
    tables.IgnMapOut.fill(2);
    tables.PwmMapOut.fill(3);
    program.history().look();
    form.lstPoints.choose(0);
    form.chkIgnition.press();  // not this one
    form.btnRestore.press();
    const auto point = fullPoint();
    EXPECT_EQ(tables.FuelMapOut[159], point.fuel.working[159]);
    EXPECT_EQ(tables.FuelMapOut[160], 1);  // of no map of this ECU
    EXPECT_EQ(tables.IgnMapOut[5], 2);
    EXPECT_EQ(tables.PwmMapOut[64], point.pwm.working[64]);
    EXPECT_EQ(form.lblState.Caption.get(), "In the working maps now: fuel, PWM. \"Send\" brings them to the ECU.");
    program.undo().undo(nullptr);
    EXPECT_EQ(tables.FuelMapOut[159], 1);
    EXPECT_EQ(tables.PwmMapOut[64], 3);
}

TEST_F(FrmRestoreTest, BringsBackWhatWasEdited) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    form.chkDesk.press();
    form.btnRestore.press();
    EXPECT_EQ(tables.FuelMapOut[159], fullPoint().fuel.edited[159]);
}

TEST_F(FrmRestoreTest, APointOfAnotherTypeIsToldBeforeAndAfter) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    EXPECT_FALSE(form.lblOther.Visible);
    tables.SWType = 12;
    pump.wait(600);
    EXPECT_TRUE(form.lblOther.Visible);
    const std::string other =
        "The point is of an ECU of type 11, this one has type 12: its maps may mean other things here.";
    EXPECT_EQ(form.lblOther.Caption.get(), other);
    form.btnRestore.press();
    EXPECT_EQ(form.lblState.Caption.get(),
              "In the working maps now: fuel, ignition, PWM. \"Send\" brings them to the ECU. " + other);
    EXPECT_EQ(tables.FuelMapOut[159], fullPoint().fuel.working[159]);
    tables.SWType = 14;
    form.btnRestore.press();
    EXPECT_THAT(form.lblState.Caption.get(), HasSubstr("Nothing was restored. Its maps have 160 cells"));
    tables.SWType = 0;  // no ECU has told anything
    pump.wait(600);
    EXPECT_FALSE(form.lblOther.Visible);
}

TEST_F(FrmRestoreTest, TheButtonsSayThatTheyWriteOver) {
    RestoreJournal journal;
    journal.ecu = {11, 3386};
    journal.cells = {{600, 1, 2}};
    EXPECT_EQ(JournalFile(folder / "restore").save(journal), "");
    CellEcu ecu;
    ecu.cells[600] = 9;
    support::VirtualProgram other(&ecu);
    std::filesystem::create_directories(other.folder / "restore");
    std::filesystem::copy_file(JournalFile(folder / "restore").path({11, 3386}),
                               JournalFile(other.folder / "restore").path({11, 3386}));
    other.connect();
    other.pump.wait(1500);
    other.program.restorePoints().open();
    auto& form = dynamic_cast<FrmRestore&>(*other.windows.loaded().back());
    EXPECT_EQ(form.btnGoOn.Caption.get(), "Go on");
    EXPECT_EQ(form.forgetQuestion(),
              form.lblOffer.Caption.get() +
                  " Leave the settings in the ECU as they are now? The way on and the way back are gone then.");
    form.btnGoOn.press();
    EXPECT_EQ(form.btnGoOn.Caption.get(), "Go on, overwrite");
    EXPECT_EQ(form.btnGoBack.Caption.get(), "Go back, overwrite");
    EXPECT_THAT(form.lblState.Caption.get(), HasSubstr("address 600 is 9, not 1 or 2"));
    form.btnGoBack.press();
    EXPECT_EQ(ecu.cells[600], 1);
    EXPECT_EQ(form.btnGoBack.Caption.get(), "Go back");
    EXPECT_EQ(form.forgetQuestion(), "");
}

TEST_F(FrmRestoreTest, PicksAPointByItsName) {
    const auto name = put(1, "maps read");
    put(2, "before: fuel map");
    auto& form = open();
    form.txtFilter.Text = "fuel";
    program.restorePoints().openAt("none.point");
    EXPECT_EQ(form.txtFilter.Text.get(), "");
    EXPECT_EQ(form.lstPoints.ListIndex, -1);
    program.restorePoints().openAt(name);
    EXPECT_EQ(form.lstPoints.chosen()->name, name);
}

TEST_F(FrmRestoreTest, SendsNothingForMaps) {
    connect();
    window.TimerRequestData.Enabled = false;
    window.TimerGetSettings.Enabled = false;
    static_cast<void>(sent());
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    form.btnRestore.press();
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(FrmRestoreTest, ExportsATune) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    dialogs.answerFile((folder / "tune.txt").string());
    form.btnExportTune.press();
    EXPECT_EQ(form.lblState.Caption.get(), "Tune: " + (folder / "tune.txt").string());
    const auto point = fullPoint();
    EXPECT_THAT(folder.read("tune.txt"), testing::StartsWith("Injection\r\n " + std::to_string(*point.fuel.working[0]) +
                                                             "  " + std::to_string(*point.fuel.working[1]) + " "));
    EXPECT_THAT(folder.read("tune.txt"), HasSubstr("Misc\r\n 9  8  7  6  5  4  3  2  1 \r\n"));
}

TEST_F(FrmRestoreTest, ATuneThatCantBeWrittenIsNotCalledExported) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    dialogs.answerFile(folder.nowhere().string());
    form.btnExportTune.press();
    EXPECT_EQ(form.lblState.Caption.get(), "");
}

TEST_F(FrmRestoreTest, ExportsAnImage) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    dialogs.answerFile((folder / "image.txt").string());
    form.btnExportImage.press();
    const auto image = folder.read("image.txt");
    EXPECT_THAT(image, testing::StartsWith(" 0 \r\n 5 \r\n 10 \r\n"));
    EXPECT_EQ(std::count(image.begin(), image.end(), '\n'), 3001);
}

TEST_F(FrmRestoreTest, AnExportThatIsCancelledWritesNothing) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    form.btnExportTune.press();
    form.btnExportImage.press();
    EXPECT_EQ(form.lblState.Caption.get(), "");
}

TEST_F(FrmRestoreTest, AsksBeforeADelete) {
    put(1, "maps read");
    auto& form = open();
    EXPECT_EQ(form.deleteQuestion(), "");
    form.lstPoints.choose(0);
    EXPECT_EQ(form.deleteQuestion(),
              "Delete the restore point of 2026-05-06 17:08:01 (maps read)? This can't be undone.");
}

TEST_F(FrmRestoreTest, ComparesThePickedPoint) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    form.btnCompare.press();
    EXPECT_EQ(windows.loaded().back()->name(), "frmCompare");
}

TEST_F(FrmRestoreTest, AnExportThatFailsLeavesTheOlderFile) {
    put(1, "maps read");
    auto& form = open();
    form.lstPoints.choose(0);
    const auto exportTo = [&](const char* name, controls::CommandButton& button) {
        folder.write(name, "older");
        dialogs.answerFile((folder / name).string());
        const support::FileSizeLimit full(1000);
        button.press();
    };
    exportTo("tune.txt", form.btnExportTune);
    exportTo("image.txt", form.btnExportImage);
    EXPECT_EQ(folder.read("tune.txt"), "older");
    EXPECT_EQ(folder.read("image.txt"), "older");
    EXPECT_THAT(folder.names(), testing::Not(testing::Contains(HasSubstr(".korvane-"))));
    EXPECT_EQ(form.lblState.Caption.get(), "");
}

TEST_F(FrmRestoreTest, AnExportIsOnTheDiskBeforeItTakesThePlaceOfTheOlderFile) {
    put(1, "maps read");
    std::vector<std::string> flushed;
    machine.toDisk = [&](const std::filesystem::path& place) {
        flushed.push_back(std::filesystem::is_directory(place) ? "folder" : folder.read("tune.txt"));
        return std::error_code();
    };
    auto& form = open();
    form.lstPoints.choose(0);
    folder.write("tune.txt", "older");
    dialogs.answerFile((folder / "tune.txt").string());
    form.btnExportTune.press();
    EXPECT_THAT(flushed, ElementsAre("older", "folder"));
    EXPECT_THAT(folder.read("tune.txt"), testing::StartsWith("Injection"));
}

// As another program does that has the same folder.
TEST_F(FrmRestoreTest, FollowsWhatOthersDoInTheFolder) {
    put(1, "a");
    const auto name = put(2, "b");
    put(3, "c");
    auto& form = open();
    form.lstPoints.choose(2);
    pump.wait(1000);
    EXPECT_THAT(reasons(form), ElementsAre("c", "b", "a"));
    PointStore other(folder / "restore");
    EXPECT_EQ(other.remove(name), "");
    touch(1);
    pump.wait(500);
    EXPECT_THAT(reasons(form), ElementsAre("c", "a"));
    EXPECT_EQ(form.lstPoints.chosen()->reason, "a");
    put(4, "d");
    touch(2);
    pump.wait(500);
    EXPECT_THAT(reasons(form), ElementsAre("d", "c", "a"));
    EXPECT_EQ(form.lblCount.Caption.get(), "3 restore points");
}

TEST_F(FrmRestoreTest, APickedPointThatAnotherProgramRemovesIsPickedNoMore) {
    const auto name = put(1, "a");
    auto& form = open();
    form.lstPoints.choose(0);
    EXPECT_EQ(PointStore(folder / "restore").remove(name), "");
    touch(1);
    form.btnExportTune.press();
    EXPECT_EQ(form.lblState.Caption.get(), "No tune: no file.");
    EXPECT_FALSE(form.btnExportTune.Enabled);
    EXPECT_EQ(form.lblPoint.Caption.get(), "");
}

TEST_F(FrmRestoreTest, SettingsThatWereNotReadBackAreCounted) {
    put(1, "maps read");
    auto& form = open();
    const auto kept = [](std::size_t address) { return fullPoint().eeprom.at(address).byte; };
    const auto other = [&](std::size_t address) { return static_cast<std::uint8_t>(kept(address) ^ 1U); };
    window.ecuEeprom.told(10, other(10));
    window.ecuEeprom.sent(11, other(11));
    window.ecuEeprom.sent(12, kept(12));
    form.lstPoints.choose(0);
    EXPECT_THAT(form.lblPoint.Caption.get(), testing::EndsWith(", cells that differ now: 2, not read back: 1"));
    window.ecuEeprom.told(11, other(11));
    pump.wait(500);
    EXPECT_THAT(form.lblPoint.Caption.get(), testing::EndsWith(", cells that differ now: 2"));
}

TEST_F(FrmRestoreTest, APointThatKnowsNoMapSaysSoWhereNothingDiffers) {
    auto point = fullPoint();
    for (auto* map : {&point.fuel, &point.ignition, &point.pwm}) {
        map->working = {};
    }
    point.misc.reset();
    PointStore(folder / "restore").add(point);
    auto& form = open();
    window.ecuEeprom.told(11, 55);
    form.lstPoints.choose(0);
    EXPECT_THAT(form.lblPoint.Caption.get(),
                testing::EndsWith(", nothing differs now; these maps it does not know: fuel, ignition, PWM"));
    window.ecuEeprom.told(11, 54);
    pump.wait(600);
    EXPECT_THAT(form.lblPoint.Caption.get(), testing::EndsWith(", cells that differ now: 1"));
}

}  // namespace
}  // namespace korvane::keep
