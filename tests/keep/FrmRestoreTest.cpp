#include <gmock/gmock.h>

#include "core/history/MapHistory.h"
#include "keep/PointSamples.h"
#include "keep/restore/FrmRestore.h"
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

}  // namespace
}  // namespace korvane::keep
