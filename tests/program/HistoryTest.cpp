// Undo, redo and revert of the working maps in the whole program, with the keys of the map windows.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "keep/compare/FrmCompare.h"
#include "keep/restore/RestoreContext.h"
#include "maps/MapForm.h"
#include "maps/history/FrmHistory.h"
#include "maps/panes/MapStatus.h"
#include "support/EcuDevice.h"
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

TEST_F(HistoryTest, AStrayKeyBehindAnUndoLosesNothing) {
    auto& form = openMaps();
    press(form.fuel(1), kKeyPlus);
    press(form.fuel(2), kKeyPlus);
    undo(form.fuel(1));
    undo(form.fuel(1));
    press(form.fuel(9), kKeyPlus);
    EXPECT_EQ(steps().at(2), "Fuel: undone: 2 steps");
    undo(form.fuel(1));
    undo(form.fuel(1));
    EXPECT_EQ(form.HistoryNote.get(), "Undone: Fuel: undone: 2 steps");
    EXPECT_EQ(fuel(1), 91);
    EXPECT_EQ(fuel(2), 91);
    EXPECT_EQ(fuel(9), 90);
}

TEST_F(HistoryTest, TheEngineFollowsAnUndoThatIsUndone) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.fuel(17), kKeyPlus);
    undo(form.fuel(17));
    press(form.fuel(9), kKeyPlus);
    static_cast<void>(sent());
    undo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(9, 90));
    undo(form.fuel(17));
    EXPECT_EQ(sent(), fuelCell(17, 91));
    EXPECT_EQ(window.ecuMaps.fuel.working(17), 91);
}

TEST_F(HistoryTest, AStepOfTheIgnitionMapIsFollowedByItsOwnCommand) {
    auto& form = openMaps();
    receiveFrame('a', Bytes(160, 30));
    form.chkOnlineChanges.Value = 1;
    press(form.ign(5), kKeyPlus);
    static_cast<void>(sent());
    undo(form.ign(5));
    EXPECT_EQ(sent(), (Bytes{0x69, 5, 5, 30, 30, 0x96}));
    EXPECT_EQ(window.ecuMaps.ignition.working(5), 30);
}

TEST_F(HistoryTest, AStepOfThePwmTableIsNeverSentByItself) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    press(form.pwm(70), kKeyPlus);
    EXPECT_EQ(tables.PwmMapOut[70], 1);
    undo(form.pwm(70));
    EXPECT_EQ(tables.PwmMapOut[70], 0);
    redo(form.pwm(70));
    EXPECT_EQ(tables.PwmMapOut[70], 1);
    EXPECT_THAT(sent(), IsEmpty());
}

// A correction goes out whether the box is ticked or not.
TEST_F(HistoryTest, TheAgentsRunIsAnEditThatWasNotSentIfItIsUndoneWithTheBoxUnticked) {
    auto& form = openMaps();
    tables.FuelMapOut[0] = 110;
    program.history().look();
    program.analyser().SmoothFuelMap();
    rest();
    static_cast<void>(sent());
    undo(form.fuel(0));
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(fuel(1), 90);
}

TEST_F(HistoryTest, WhileAMapIsSentNobodyWalks) {
    auto& form = openMaps();
    press(form.fuel(1), kKeyPlus);
    press(form.fuel(2), kKeyPlus);
    undo(form.fuel(1));
    program.undo().showList();
    auto& list = dynamic_cast<FrmHistory&>(*windows.loaded().back());
    constexpr auto kWords = "Not while a map is being sent";
    bool seen = false;
    at(static_cast<int>(pump.milliseconds()) + 100, [&] {
        seen = true;
        undo(form.fuel(1));
        EXPECT_EQ(form.HistoryNote.get(), kWords);
        form.HistoryNote = "";
        redo(form.fuel(1));
        EXPECT_EQ(form.HistoryNote.get(), kWords);
        form.HistoryNote = "";
        press(form.fuel(1), kKeyBackspace, kControlMask);
        EXPECT_EQ(form.HistoryNote.get(), kWords);
        for (auto* const button : {&list.btnUndo, &list.btnRedo}) {
            list.lblNote.Caption = "";
            button->press();
            EXPECT_EQ(list.lblNote.Caption.get(), kWords);
        }
        list.lblNote.Caption = "";
        list.lstSteps.choose(0);
        EXPECT_EQ(list.lblNote.Caption.get(), kWords);
        EXPECT_EQ(program.history().place(), 1U);
        EXPECT_EQ(fuel(1), 91);
    });
    form.btnWriteFuel.press();
    EXPECT_TRUE(seen);
    undo(form.fuel(1));
    EXPECT_EQ(fuel(1), 90);
}

// Keys, injector scaling and the agent do what they always did while a map is being sent. What is said of the send and
// of the map must be true all the same.
struct MixedSendTest : HistoryTest {
    // Sends the fuel map, which is all 90, does this in the middle of it, and has the send acknowledged. What is said
    // of the reads before it is left out.
    std::string resultOfSend(FrmMaps& form, const std::function<void()>& act) {
        at(static_cast<int>(pump.milliseconds()) + 100, act);
        at(static_cast<int>(pump.milliseconds()) + 1000, [this] { receiveFrame('F', {1}); });
        form.btnWriteFuel.press();
        rest();
        return sendResult(form);
    }
    static std::string sendResult(FrmMaps& form) {
        const auto text = form.line().watch().Text.get();
        const auto end = text.rfind("; ");
        return end == std::string::npos ? text : text.substr(end + 2);
    }
};

TEST_F(MixedSendTest, ARealtimeChangeAmongTheBytesOfAMapIsTold) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    EXPECT_EQ(resultOfSend(form, [&] { press(form.fuel(1), kKeyPlus); }),
              "Fuel send: acknowledged, but mixed with other commands");
    EXPECT_TRUE(form.line().watch().Failed);
    EXPECT_EQ(resultOfSend(form, [] {}), "Fuel: acknowledged");
}

// The tuning agent has no part in the window.
TEST_F(MixedSendTest, ACommandOfSomebodyElseAmongTheBytesOfAMapIsTold) {
    auto& form = openMaps();
    EXPECT_EQ(resultOfSend(form, [&] { window.MSComm1.Output(fuelCell(3, 91)); }),
              "Fuel send: acknowledged, but mixed with other commands");
}

TEST_F(MixedSendTest, ACommandBehindTheLastByteOfAMapIsNotAmongThem) {
    auto& form = openMaps();
    form.chkOnlineChanges.Value = 1;
    EXPECT_EQ(resultOfSend(form, [] {}), "Fuel send: acknowledged");
    press(form.fuel(1), kKeyPlus);
    EXPECT_EQ(sendResult(form), "Fuel send: acknowledged");
}

TEST_F(MixedSendTest, AnEditOfACellThatHasGoneOutCountsAsUnsent) {
    auto& form = openMaps();
    EXPECT_EQ(resultOfSend(form, [&] { press(form.fuel(1), kKeyPlus); }), "Fuel send: acknowledged");
    EXPECT_THAT(steps(), ElementsAre("Fuel: cell 2 from 90 to 91"));
    EXPECT_EQ(statusOf(form).unsent, "Not sent: 1 fuel");
}

// The cells before the moment went out as they were, those behind it as they are.
TEST_F(MixedSendTest, ScalingInTheMiddleOfASendLeavesTheFirstCellsUnsent) {
    auto& form = openMaps();
    std::size_t gone = 0;
    const auto scale = [&] {
        gone = recorder.arrivals.size() - 1;
        const core::MapHistory::Change step(&program.history(), {core::Cause::Kind::Scaling});
        tables.FuelMapOut.fill(45);
    };
    EXPECT_EQ(resultOfSend(form, scale), "Fuel send: acknowledged");
    const auto unsent = unsentOf(form);
    ASSERT_FALSE(unsent.empty());
    EXPECT_EQ(unsent[0].map, "fuel");
    EXPECT_NEAR(static_cast<double>(unsent[0].cells.unsent), static_cast<double>(gone), 2);
    EXPECT_GT(gone, 10U);
}

// A restore and a comparison bring whole maps, of which the ECU would get a part.
struct BringingTest : HistoryTest {
    static constexpr auto kWords = "Not while a map is being sent";

    // Sends the fuel map, which is all 91, and does this in the middle of the send.
    void inTheMiddle(FrmMaps& form, const std::function<void()>& act) {
        tables.FuelMapOut.fill(91);
        program.history().look();
        bool seen = false;
        at(static_cast<int>(pump.milliseconds()) + 100, [&] {
            seen = true;
            act();
            EXPECT_EQ(tables.FuelMapOut[150], 91);
        });
        form.btnWriteFuel.press();
        EXPECT_TRUE(seen);
        EXPECT_THAT(sent(), testing::Contains(91).Times(testing::Ge(160)));
    }
};

TEST_F(BringingTest, ARestorePointComesOnTheDeskOnlyBeforeOrBehindASend) {
    auto& form = openMaps();
    ASSERT_EQ(program.keeper().addByHand(""), "");
    const auto restoreFuel = [&, name = program.keeper().points().front().name] {
        const keep::RestoreChoice choice{.maps = {&keep::Snapshot::fuel}, .from = keep::MapFrom::Desk};
        return keep::restore(program.restorePoints().context(), name, choice);
    };
    inTheMiddle(form, [&] { EXPECT_EQ(restoreFuel(), kWords); });
    EXPECT_THAT(restoreFuel(), testing::StartsWith("In the working maps now: fuel."));
    EXPECT_EQ(fuel(150), 90);
}

TEST_F(BringingTest, AComparisonCopiesOnlyBeforeOrBehindASend) {
    auto& form = openMaps();
    ASSERT_EQ(program.keeper().addByHand(""), "");
    using Kind = keep::Source::Kind;
    const auto name = program.keeper().points().front().name;
    program.comparisons().open({Kind::PointDesk, name}, {Kind::Desk, {}});
    auto& shown = dynamic_cast<keep::FrmCompare&>(*windows.loaded().back());
    inTheMiddle(form, [&] {
        shown.btnCopyMap.press();
        EXPECT_EQ(shown.lblSummary.Caption.get(), kWords);
    });
    shown.btnCopyMap.press();
    EXPECT_EQ(fuel(150), 90);
    EXPECT_NE(shown.lblSummary.Caption.get(), kWords);
}

TEST_F(HistoryTest, WhileAMapIsReadBackTheTunerMayWalk) {
    auto& form = openMaps();
    press(form.fuel(1), kKeyPlus);
    form.verifySwitch().On = true;
    at(static_cast<int>(pump.milliseconds()) + 700, [&] { undo(form.fuel(1)); });
    form.btnWriteFuel.press();
    EXPECT_EQ(fuel(1), 90);
}

// With the virtual ECU. What it stores is one state of the map, whatever is pressed during the send.
struct HistoryAndEcu : testing::Test {
    struct Run : support::VirtualProgram {
        explicit Run(platform::LineDevice* device) : VirtualProgram(device) {
            connect();
            pump.wait(1500);
            program.mapWindows().open();
            pump.wait(8000);
        }
        FrmMaps& form() { return dynamic_cast<FrmMaps&>(*windows.loaded().back()); }
        // Presses a key so many milliseconds from now.
        void pressIn(int milliseconds, controls::Control& control, int keyCode) {
            at(static_cast<int>(pump.milliseconds()) + milliseconds,
               [&control, keyCode] { HistoryTest::press(control, keyCode, kControlMask); });
        }
        // Another byte in each cell of the map, as one step.
        void raise(core::EditedMap map) {
            const core::MapHistory::Change change(&program.history(), {core::Cause::Kind::Copy});
            for (auto& byte : core::workingMap(tables, map)) {
                byte = static_cast<std::uint8_t>(byte ^ 1);
            }
        }
    };
};

Bytes storedBy(const support::EcuDevice& ecu, std::size_t first, std::size_t count) {
    const auto cells = ecu.eeprom().subspan(first, count);
    return {cells.begin(), cells.end()};
}

constexpr std::size_t kFuelPlace = 16;  // in the EEPROM of this ECU
constexpr std::size_t kPwmPlace = 400;
constexpr std::size_t kPwmCells = 96;

TEST_F(HistoryAndEcu, GetsOneStateOfAFuelMapThoughUndoIsPressedDuringTheSend) {
    for (const int moment : {0, 1, 100, 319, 321, 420}) {
        support::EcuDevice ecu;
        Run run(&ecu);
        ASSERT_EQ(Bytes(run.tables.FuelMapOut.begin(), run.tables.FuelMapOut.begin() + 160),
                  storedBy(ecu, kFuelPlace, 160));
        run.raise(core::EditedMap::Fuel);
        const Bytes map(run.tables.FuelMapOut.begin(), run.tables.FuelMapOut.begin() + 160);
        run.pressIn(moment, run.form().fuel(0), kZ);
        run.pressIn(moment + 50, run.form().fuel(0), kY);
        run.form().btnWriteFuel.press();
        run.pump.wait(1000);
        EXPECT_EQ(storedBy(ecu, kFuelPlace, 160), map) << moment;
    }
}

TEST_F(HistoryAndEcu, GetsOneStateOfAPwmTableThoughUndoIsPressedDuringTheSend) {
    support::EcuDevice ecu;
    Run run(&ecu);
    run.raise(core::EditedMap::Pwm);
    const Bytes map(run.tables.PwmMapOut.begin() + 64, run.tables.PwmMapOut.begin() + 160);
    ASSERT_NE(storedBy(ecu, kPwmPlace, kPwmCells), map);
    run.pressIn(2500, run.form().fuel(0), kZ);
    run.form().btnSavePWM.press();
    run.pump.wait(1000);
    EXPECT_EQ(storedBy(ecu, kPwmPlace, kPwmCells), map);
}

TEST_F(HistoryAndEcu, ARestartTakesWhatWasSentByRealtimeChangesAndTheWindowSaysSo) {
    support::EcuDevice ecu;
    Run run(&ecu);
    auto& form = run.form();
    const auto told = [&] { return statusOf(form).store; };
    EXPECT_EQ(statusOf(form).unknown, "Not known whether stored: fuel, ignition, PWM");
    EXPECT_EQ(told(), "");
    form.chkOnlineChanges.Value = 1;
    HistoryTest::press(form.fuel(17), kKeyPlus);
    EXPECT_EQ(told(), "Sent fuel: not told to store");
    run.program.disconnect();
    run.pump.wait(2000);
    run.program.connectTo(1);
    EXPECT_EQ(told(), "Sent fuel: not told to store, perhaps gone");
    run.pump.wait(2000);
    form.btnReadFuel.press();
    run.pump.wait(1000);
    EXPECT_EQ(told(), "Sent fuel: not told to store");
    form.btnSavePWM.press();  // ends with a restart
    run.pump.wait(3000);
    EXPECT_THAT(told(), testing::HasSubstr("Sent fuel: not stored, gone with the restart"));
    EXPECT_EQ(statusOf(form).unknown, "");
    form.btnReadFuel.press();
    run.pump.wait(1000);
    EXPECT_THAT(told(), testing::HasSubstr("Sent fuel: not stored, gone with the restart"));
}

}  // namespace
}  // namespace korvane::maps
