// Undo, redo and revert of the working maps in the whole program, with the keys of the map windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "maps/MapForm.h"
#include "maps/history/FrmHistory.h"
#include "support/VirtualProgram.h"

namespace korvane::maps {
namespace {

using controls::kControlMask;
using controls::kKeyBackspace;
using controls::kKeyMinus;
using controls::kKeyPlus;
using controls::kShiftMask;
using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kAllFeatures = 0xFFFF;
constexpr int kH = 72;
constexpr int kY = 89;
constexpr int kZ = 90;

// What "Realtime changes" sends for a cell of the fuel map: 'g', cell and byte twice, the complement of 'g'.
Bytes fuelCell(std::uint8_t cell, std::uint8_t byte) {
    return {0x67, cell, cell, byte, byte, 0x98};
}

Bytes operator+(Bytes one, const Bytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

struct HistoryTest : testing::Test, support::VirtualProgram {
    // frmMaps with a fuel map of 90, read from the ECU, and nothing else on the line.
    FrmMaps& openMaps() {
        connect();
        tables.Features = kAllFeatures;
        tables.SWType = 11;
        program.mapWindows().open();
        auto& form = dynamic_cast<FrmMaps&>(*windows.loaded().back());
        pump.wait(1000);
        window.TimerGetSettings.Enabled = false;
        window.TimerRequestData.Enabled = false;
        readFuel(90);
        static_cast<void>(sent());
        return form;
    }
    void readFuel(std::uint8_t byte) { receiveFrame('f', Bytes(160, byte)); }
    static void press(controls::Control& control, int keyCode, int shift = 0) {
        control.window().setFocus(&control);
        control.keyDown(keyCode, shift);
        control.keyUp(keyCode, shift);
    }
    static void undo(controls::Control& control) { press(control, kZ, kControlMask); }
    static void redo(controls::Control& control) { press(control, kY, kControlMask); }
    void rest() { pump.wait(10'000); }
    [[nodiscard]] int fuel(std::size_t cell) const { return tables.FuelMapOut.at(cell); }
    [[nodiscard]] std::vector<std::string> steps() {
        std::vector<std::string> all;
        for (std::size_t number = 1; number <= program.history().count(); ++number) {
            all.push_back(program.history().step(number).words());
        }
        return all;
    }
};

TEST_F(HistoryTest, UndoBringsBackTheEditsThatAReadByMistakeReplaced) {
    auto& form = openMaps();
    press(form.fuel(17), kKeyPlus);
    press(form.fuel(18), kKeyMinus);
    rest();
    readFuel(90);
    EXPECT_EQ(fuel(17), 90);
    undo(form.fuel(0));
    EXPECT_EQ(fuel(17), 91);
    EXPECT_EQ(fuel(18), 89);
    EXPECT_THAT(steps(), ElementsAre("Fuel: cell 18 from 90 to 91", "Fuel: cell 19 from 90 to 89",
                                     "Fuel: read from the ECU, 2 cells"));
    EXPECT_EQ(form.fuel(17).ForeColor.get(), controls::kBlue);
}

TEST_F(HistoryTest, TheCellTakesNoNoticeOfTheKeysOfTheWindow) {
    auto& form = openMaps();
    press(form.fuel(17), kKeyPlus);
    const std::string caption = form.Caption;
    undo(form.fuel(17));
    redo(form.fuel(17));
    EXPECT_EQ(form.Caption.get(), caption);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryTest, ControlShiftAndZDoesAgain) {
    auto& form = openMaps();
    press(form.fuel(17), kKeyPlus);
    undo(form.fuel(17));
    press(form.fuel(17), kZ, kControlMask | kShiftMask);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryTest, WhereNothingIsLeftTheWindowSaysSo) {
    auto& form = openMaps();
    undo(form.fuel(17));
    EXPECT_EQ(form.HistoryNote.get(), "Nothing to undo");
    redo(form.fuel(17));
    EXPECT_EQ(form.HistoryNote.get(), "Nothing to redo");
}

TEST_F(HistoryTest, TheNoteGoesWithTheNextEditAndWithTheFocus) {
    auto& form = openMaps();
    press(form.fuel(17), kKeyPlus);
    undo(form.fuel(17));
    EXPECT_EQ(form.HistoryNote.get(), "Undone: Fuel: cell 18 from 90 to 91");
    form.setFocus(&form.fuel(3));
    EXPECT_EQ(form.HistoryNote.get(), "");
    redo(form.fuel(3));
    EXPECT_EQ(form.HistoryNote.get(), "Done again: Fuel: cell 18 from 90 to 91");
    press(form.fuel(3), kKeyPlus);
    EXPECT_EQ(form.HistoryNote.get(), "");
}

// Cells 17 to 18 and 33 to 34 are its corners; a command acts on all from 17 to 34.
TEST_F(HistoryTest, ABlockCommandIsOneStep) {
    auto& form = openMaps();
    press(form.fuel(16), controls::kKeyShift, kShiftMask);
    press(form.fuel(33), controls::kKeyShift, kShiftMask);
    for (int i = 0; i < 3; ++i) {
        press(form.fuel(33), kKeyPlus);
    }
    EXPECT_THAT(steps(), ElementsAre("Fuel: block 17 to 34 up by 3"));
    undo(form.fuel(33));
    EXPECT_EQ(fuel(16), 90);
    EXPECT_EQ(fuel(25), 90);
    EXPECT_EQ(fuel(33), 90);
}

TEST_F(HistoryTest, OfAMapThatWasSentByRealtimeChangesExactlyTheSentCellsFollow) {
    auto& form = openMaps();
    press(form.fuel(16), kKeyPlus);
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    EXPECT_EQ(sent(), fuelCell(17, 91));
    undo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(17, 90));
    undo(form.fuel(17));
    EXPECT_THAT(sent(), IsEmpty());
    redo(form.fuel(17));
    redo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(17, 91));
    EXPECT_EQ(window.ecuMaps.fuel.working(17), 91);
}

TEST_F(HistoryTest, WithTheBoxUntickedNothingIsSent) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    static_cast<void>(sent());
    form.chkOnlineChanges.Value = 0;
    undo(form.fuel(17));
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(fuel(17), 90);
}

TEST_F(HistoryTest, WithThePortClosedNothingIsSent) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    static_cast<void>(sent());
    program.disconnect();
    pump.wait(3000);
    static_cast<void>(sent());
    undo(form.fuel(17));
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(fuel(17), 90);
}

TEST_F(HistoryTest, WhileATransferHasTheLineNothingIsSent) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    static_cast<void>(sent());
    const link::LinkState::Transfer transfer(&window.linkState);
    undo(form.fuel(17));
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(fuel(17), 90);
}

TEST_F(HistoryTest, SeveralCellsAreSentOneAfterTheOtherWithPauses) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    for (const int cell : {1, 2, 3}) {
        press(form.fuel(cell), kKeyPlus);
    }
    static_cast<void>(sent());
    static_cast<void>(program.undo().goTo(0, &form));
    pump.wait(1000);
    const auto arrivals = std::exchange(recorder.arrivals, {});
    ASSERT_EQ(arrivals.size(), 18U);
    EXPECT_GE(arrivals[6].at - arrivals[0].at, 6000);
    EXPECT_GE(arrivals[12].at - arrivals[6].at, 6000);
    Bytes bytes;
    for (const auto& arrival : arrivals) {
        bytes.push_back(arrival.byte);
    }
    EXPECT_EQ(bytes, fuelCell(1, 90) + fuelCell(2, 90) + fuelCell(3, 90));
}

TEST_F(HistoryTest, OneHistoryForAllMapsAcrossWindowsClosedAndOpened) {
    auto& form = openMaps();
    receiveFrame('a', Bytes(160, 30));
    press(form.ign(5), kKeyPlus);
    press(form.fuel(17), kKeyPlus);
    EXPECT_TRUE(form.unload());
    program.mapWindows().open();
    auto& again = dynamic_cast<FrmMaps&>(*windows.loaded().back());
    undo(again.fuel(0));
    undo(again.fuel(0));
    EXPECT_EQ(fuel(17), 90);
    EXPECT_EQ(tables.IgnMapOut[5], 30);
}

TEST_F(HistoryTest, EveryOpenWindowShowsWhatAnUndoHasChanged) {
    connect();
    tables.Features = kAllFeatures;
    for (int i = 0; i < 2; ++i) {
        program.mapWindows().openLarge();
    }
    auto& one = dynamic_cast<FrmMaps_Large&>(*windows.loaded().end()[-2]);
    auto& other = dynamic_cast<FrmMaps_Large&>(*windows.loaded().back());
    pump.wait(1000);
    readFuel(90);
    press(other.fuel(17), kKeyPlus);
    press(other.fuel(17), kKeyMinus, 0);
    const std::string shown = other.fuel(17).Text;
    press(other.fuel(17), kKeyPlus);
    undo(one.fuel(0));
    EXPECT_EQ(other.fuel(17).Text.get(), shown);
    EXPECT_EQ(one.fuel(17).Text.get(), shown);
}

TEST_F(HistoryTest, ALargeMapSendsNoCellThatTheCommandCannotName) {
    connect();
    tables.Features = kAllFeatures;
    tables.SWType = 14;
    program.mapWindows().openLarge();
    auto& form = dynamic_cast<FrmMaps_Large&>(*windows.loaded().back());
    pump.wait(1000);
    window.TimerGetSettings.Enabled = false;
    window.TimerRequestData.Enabled = false;
    readFuel(90);
    receiveFrame(245, Bytes(160, 90));
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(255), kKeyPlus);
    press(form.fuel(256), kKeyPlus);
    static_cast<void>(sent());
    undo(form.fuel(256));
    EXPECT_THAT(sent(), IsEmpty());
    undo(form.fuel(256));
    EXPECT_EQ(sent(), fuelCell(255, 90));
}

TEST_F(HistoryTest, RevertBringsTheCellBackToWhatTheEcuSent) {
    auto& form = openMaps();
    tables.FuelMapIn.fill(50);  // as a file leaves it
    tables.FuelMapOut.fill(50);
    press(form.fuel(17), kKeyBackspace, kControlMask);
    EXPECT_EQ(fuel(17), 90);
    EXPECT_EQ(fuel(18), 50);
    EXPECT_EQ(form.HistoryNote.get(), "Reverted 1 cell");
    EXPECT_EQ(steps().back(), "Fuel: cell 18 reverted from 50 to 90");
}

TEST_F(HistoryTest, RevertOfABlockLeavesTheOthers) {
    auto& form = openMaps();
    tables.FuelMapOut.fill(50);
    press(form.fuel(16), controls::kKeyShift, kShiftMask);
    press(form.fuel(33), controls::kKeyShift, kShiftMask);
    press(form.fuel(33), kKeyBackspace, kControlMask);
    EXPECT_EQ(fuel(15), 50);
    EXPECT_EQ(fuel(16), 90);
    EXPECT_EQ(fuel(33), 90);
    EXPECT_EQ(fuel(34), 50);
    EXPECT_EQ(steps().back(), "Fuel: block 17 to 34 reverted");
    undo(form.fuel(33));
    EXPECT_EQ(fuel(16), 50);
}

TEST_F(HistoryTest, RevertLeavesCellsThatWereNeverRead) {
    auto& form = openMaps();
    tables.IgnMapOut.fill(30);
    press(form.ign(17), kKeyBackspace, kControlMask);
    EXPECT_EQ(tables.IgnMapOut[17], 30);
    EXPECT_EQ(form.HistoryNote.get(), "Nothing to revert, 1 cell never read from the ECU");
}

TEST_F(HistoryTest, RevertOfACellThatReachedTheEngineIsSentWhileTheBoxIsTicked) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    static_cast<void>(sent());
    press(form.fuel(17), kKeyBackspace, kControlMask);
    EXPECT_EQ(sent(), fuelCell(17, 90));
    undo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(17, 91));
}

TEST_F(HistoryTest, InABoxThatIsTypedIntoTheKeysAreThoseOfItsText) {
    auto& form = openMaps();
    press(form.fuel(17), kKeyPlus);
    undo(form.txtMisc(0));
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryTest, ScalingOfTheInjectorsIsOneStep) {
    auto& form = openMaps();
    form.btnInjScale.press();
    auto& scaling = *windows.loaded().back();
    for (auto* control : scaling.controls()) {
        if (control->name() == "btnInjectorChange") {
            control->press();
        }
    }
    ASSERT_THAT(steps(), ElementsAre("Fuel: injectors rescaled, 160 cells"));
    undo(form.fuel(0));
    EXPECT_EQ(fuel(0), 90);
}

TEST_F(HistoryTest, TheAgentsRunIsOneStepThatTheEngineFollows) {
    auto& form = openMaps();
    program.analyser().setAgentEnable(true);
    form.chkOnlineChanges.Value = 1;
    form.pressFuelKey(17, kKeyPlus, 0);
    rest();
    form.pressFuelKey(17, kKeyPlus, 0);
    form.pressFuelKey(18, kKeyMinus, 0);
    program.analyser().setAgentEnable(false);
    static_cast<void>(sent());
    EXPECT_THAT(steps(), ElementsAre("Fuel: agent, 2 cells"));
    undo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(17, 90) + fuelCell(18, 90));
}

TEST_F(HistoryTest, TheAgentsSmoothingIsPartOfItsRun) {
    auto& form = openMaps();
    tables.FuelMapOut[0] = 110;
    program.history().look();
    program.analyser().SmoothFuelMap();
    EXPECT_EQ(program.history().count(), 2U);
    EXPECT_THAT(steps().back(), testing::StartsWith("Fuel: agent, "));
    form.chkOnlineChanges.Value = 1;
    rest();
    static_cast<void>(sent());
    undo(form.fuel(0));
    auto bytes = sent();
    ASSERT_THAT(bytes, testing::SizeIs(testing::Ge(12U)));
    bytes.resize(12);
    EXPECT_EQ(bytes, fuelCell(1, 90) + fuelCell(2, 90));
    EXPECT_EQ(fuel(1), 90);
}

TEST_F(HistoryTest, AFileIsOneStepAndUndoBringsAllMapsBack) {
    auto& form = openMaps();
    receiveFrame('a', Bytes(160, 30));
    const auto path = (folder.path() / "tune.txt").string();
    dialogs.answerFile(path);
    form.btnSave.press();
    press(form.fuel(17), kKeyPlus);
    press(form.ign(3), kKeyPlus);
    dialogs.answerFile(path);
    form.btnLoad.press();
    EXPECT_EQ(steps().back(), "Fuel, ignition: file loaded, 2 cells");
    undo(form.fuel(0));
    EXPECT_EQ(fuel(17), 91);
    EXPECT_EQ(tables.IgnMapOut[3], 31);
}

TEST_F(HistoryTest, ControlAndHListsTheStepsAndARowGoesThere) {
    auto& form = openMaps();
    press(form.fuel(1), kKeyPlus);
    press(form.fuel(2), kKeyPlus);
    press(form.fuel(1), kH, kControlMask);
    auto& list = dynamic_cast<FrmHistory&>(*windows.loaded().back());
    EXPECT_EQ(list.lstSteps.rowCount(), 3U);
    EXPECT_EQ(list.lstSteps.wordsOf(0), "Before the first step");
    EXPECT_EQ(list.lstSteps.wordsOf(2), "Fuel: cell 3 from 90 to 91");
    list.lstSteps.choose(1);
    EXPECT_EQ(fuel(2), 90);
    EXPECT_EQ(fuel(1), 91);
    EXPECT_EQ(list.lstSteps.here(), 1U);
    list.btnUndo.press();
    EXPECT_EQ(fuel(1), 90);
    EXPECT_FALSE(list.btnUndo.Enabled);
    list.btnRedo.press();
    EXPECT_EQ(fuel(1), 91);
}

TEST_F(HistoryTest, TheListFindsWhatAScriptHasChanged) {
    openMaps();
    program.undo().showList();
    auto& list = dynamic_cast<FrmHistory&>(*windows.loaded().back());
    tables.FuelMapOut[3] = 7;
    pump.wait(600);
    EXPECT_EQ(list.lstSteps.wordsOf(1), "Fuel: changed by a script, 1 cell");
}

TEST_F(HistoryTest, TheListsOrdersAreSentWhileTheBoxOfTheMapWindowIsTicked) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(1), kKeyPlus);
    program.undo().showList();
    auto& list = dynamic_cast<FrmHistory&>(*windows.loaded().back());
    static_cast<void>(sent());
    list.btnUndo.press();
    EXPECT_EQ(sent(), fuelCell(1, 90));
}

}  // namespace
}  // namespace korvane::maps
