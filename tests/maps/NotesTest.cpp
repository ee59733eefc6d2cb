#include <algorithm>
#include <array>
#include <vector>

#include "EditingBench.h"
#include "core/tables/LiveChannel.h"
#include "link/Frames.h"
#include "maps/notes/LiveStrip.h"
#include "maps/notes/SizeNote.h"
#include "maps/panes/MapStatus.h"

namespace korvane::maps {
namespace {

using core::LiveChannel;
using testing::HasSubstr;

class LiveStripTest : public testing::Test {
protected:
    void set(LiveChannel channel, double value) { live_.liveValues[core::indexOf(channel)].value = value; }
    void haveFrame() { set(LiveChannel::UpdateSpeed, 16); }

    core::LiveTable live_;
    LiveStrip strip_;
};

TEST_F(LiveStripTest, ShowsDashesBeforeTheFirstLiveData) {
    strip_.show(live_, {"3.2", 12.5F});
    for (const auto* text :
         {&strip_.Rpm, &strip_.Load, &strip_.Mixture, &strip_.Throttle, &strip_.Pulse, &strip_.Duty}) {
        EXPECT_EQ(text->get(), "\u2013");
    }
}

TEST_F(LiveStripTest, ShowsTheChannelsInFixedDecimals) {
    haveFrame();
    set(LiveChannel::Rpm, 2450);
    set(LiveChannel::Pressure, 1.3549);
    set(LiveChannel::Lambda, 12.4609);
    set(LiveChannel::Throttle, 30.4);
    set(LiveChannel::InjectionDuty, 89);  // 89 / 2.56 = 34.77
    strip_.show(live_, {"3.222", 12.5F});
    EXPECT_EQ(strip_.Rpm.get(), "2450");
    EXPECT_EQ(strip_.Load.get(), "1.35");
    EXPECT_EQ(strip_.MixtureName.get(), "AFR");
    EXPECT_EQ(strip_.Mixture.get(), "12.46/12.5");
    EXPECT_EQ(strip_.Throttle.get(), "30");
    EXPECT_EQ(strip_.Pulse.get(), "3.222");
    EXPECT_EQ(strip_.Duty.get(), "34.8");
}

TEST_F(LiveStripTest, ASensorInLambdaHasNoAirFuelRatioBesideIt) {
    haveFrame();
    set(LiveChannel::Lambda, 0.85);
    strip_.show(live_, {"3.2", 12.5F});
    EXPECT_EQ(strip_.MixtureName.get(), "Lambda");
    EXPECT_EQ(strip_.Mixture.get(), "0.85");
}

TEST_F(LiveStripTest, OutsideTheMapThereIsNoPulseAndNoTarget) {
    haveFrame();
    set(LiveChannel::Lambda, 13);
    strip_.show(live_, {});
    EXPECT_EQ(strip_.Pulse.get(), "\u2013");
    EXPECT_EQ(strip_.Mixture.get(), "13.00");
}

TEST_F(LiveStripTest, AbsurdNumbersAreDashes) {
    haveFrame();
    set(LiveChannel::Rpm, 1e300);
    strip_.show(live_, {});
    EXPECT_EQ(strip_.Rpm.get(), "\u2013");
}

TEST(SizeNote, TellsOnlyOfSizesThatDiffer) {
    EXPECT_EQ(sizeNote(11, kOrdinaryMaps), "");
    EXPECT_EQ(sizeNote(15, kLargeMaps), "");
    EXPECT_EQ(
        sizeNote(11, kLargeMaps),
        "The maps of this ECU have 160 cells (16 by 10), those of this window 320 cells (20 by 16): numbers stand "
        "in wrong cells. Do not send.");
    EXPECT_EQ(
        sizeNote(213, kOrdinaryMaps),
        "The maps of this ECU have 320 cells (20 by 16), those of this window 160 cells (16 by 10): numbers stand "
        "in wrong cells. Do not send.");
}

TEST(SizeNote, WaitsForTheEcuToTellItsType) {
    EXPECT_EQ(sizeNote(0, kLargeMaps), "");
}

class WindowNotesTest : public GridEditingTest {};

TEST_F(WindowNotesTest, TheSizeIsComparedWhileTheWindowIsOpen) {
    EXPECT_EQ(window_.sizeNote.Text.get(), "");
    tables_.SWType = 15;
    machine_.pump.wait(400);
    EXPECT_THAT(window_.sizeNote.Text.get(), HasSubstr("320 cells"));
}

TEST_F(WindowNotesTest, TheStripHasPulseAndTargetOfTheCellInUse) {
    tables_.liveValues[core::indexOf(LiveChannel::UpdateSpeed)].value = 16;
    tables_.liveValues[core::indexOf(LiveChannel::Lambda)].value = 14;
    tables_.MapPlace = 35;
    window_.fuel(35).Text = "2.5";
    analyser_.setpoints[35] = 12.8F;
    window_.updateMapPlace();
    EXPECT_EQ(window_.liveStrip.Pulse.get(), "2.5");
    EXPECT_EQ(window_.liveStrip.Mixture.get(), "14.00/12.8");
    tables_.MapPlace = 400;
    window_.updateMapPlace();
    EXPECT_EQ(window_.liveStrip.Pulse.get(), "\u2013");
    EXPECT_EQ(window_.liveStrip.Mixture.get(), "14.00");
}

TEST_F(WindowNotesTest, AWindowThatGetsNoFramesStillFollows) {
    tables_.liveValues[core::indexOf(LiveChannel::UpdateSpeed)].value = 16;
    tables_.liveValues[core::indexOf(LiveChannel::Rpm)].value = 3000;
    machine_.pump.wait(400);
    EXPECT_EQ(window_.liveStrip.Rpm.get(), "3000");
}

TEST_F(WindowNotesTest, AGridIsUnreadUntilTheFirstReadOrEdit) {
    EXPECT_TRUE(window_.fuel.fill.NeverRead);
    EXPECT_TRUE(window_.ign.fill.NeverRead);
    EXPECT_TRUE(window_.pwm.fill.NeverRead);
    window_.populateFuel();
    EXPECT_FALSE(window_.fuel.fill.NeverRead);
    EXPECT_TRUE(window_.ign.fill.NeverRead);
    key(window_.ign, 5, kKeyPlus);
    EXPECT_FALSE(window_.ign.fill.NeverRead);
    key(window_.pwm, 70, kKeyPlus);
    EXPECT_FALSE(window_.pwm.fill.NeverRead);
}

TEST_F(WindowNotesTest, TheStatusLineClaimsNoValueOfAnUnreadGrid) {
    window_.setFocus(&window_.fuel(17));
    EXPECT_EQ(statusOf(window_).cell, "Fuel, 1500 RPM, 10-20 %: not read from the ECU yet");
    selectBlock(window_.fuel, 17, 20);
    EXPECT_EQ(statusOf(window_).block, "");
    window_.populateFuel();
    EXPECT_THAT(statusOf(window_).cell, HasSubstr("count "));
    EXPECT_THAT(statusOf(window_).block, HasSubstr("Fuel block of 4 cells, sum "));
}

TEST_F(WindowNotesTest, AMoveOfTheFocusReadsNothing) {
    key(window_.fuel, 5, kKeyRight);
    EXPECT_TRUE(window_.fuel.fill.NeverRead);
}

TEST_F(WindowNotesTest, TheTargetsOfTheAnalyserAreNothingToRead) {
    window_.fillTargets();
    EXPECT_FALSE(window_.analys.fill.NeverRead);
}

// A large map comes in two frames, a PWM table in one for each cell.
class LargeWindowNotesTest : public LargeGridEditingTest {
protected:
    LargeWindowNotesTest() {
        tables_.IgnMapIn.fill(0);
        tables_.IgnMapOut.fill(0);
    }
    void readIgnitionHalf(std::size_t first, std::uint8_t byte) {
        const std::vector<std::uint8_t> half(link::EcuMap::kHalf, byte);
        for (auto* const image : {&tables_.IgnMapIn, &tables_.IgnMapOut}) {
            std::copy(half.begin(), half.end(), image->begin() + static_cast<std::ptrdiff_t>(first));
        }
        main_.ecuMaps.ignition.read(first, half);
        window_.populateIGN();
    }
};

TEST_F(LargeWindowNotesTest, TheHalfThatAReadLeftOutIsUnread) {
    readIgnitionHalf(0, 0);
    EXPECT_FALSE(window_.ign.fill.isUnread(0));
    EXPECT_FALSE(window_.ign.fill.isUnread(159));
    EXPECT_TRUE(window_.ign.fill.isUnread(160));
    EXPECT_TRUE(window_.ign.fill.isUnread(319));
    window_.setFocus(&window_.ign(160));
    EXPECT_EQ(statusOf(window_).cell, "Ignition, 1000 RPM, 80-90 %: not read from the ECU yet");
    readIgnitionHalf(160, 0);
    EXPECT_FALSE(window_.ign.fill.isUnread(160));
    EXPECT_THAT(statusOf(window_).cell, HasSubstr("count 0"));
}

TEST_F(LargeWindowNotesTest, TheSumOfABlockLeavesOutWhatWasNotRead) {
    readIgnitionHalf(0, 40);
    selectBlock(window_.ign, 159, 160);  // the last cell that was read, and the first that was not
    const auto block = statusOf(window_).block;
    EXPECT_THAT(block, HasSubstr("Ignition block of 2 cells, sum "));
    EXPECT_THAT(block, HasSubstr(" without 1 cell not read"));
}

TEST_F(LargeWindowNotesTest, AnEditFillsItsCellAlone) {
    readIgnitionHalf(0, 40);
    key(window_.ign, 200, kKeyPlus);
    EXPECT_FALSE(window_.ign.fill.isUnread(200));
    EXPECT_TRUE(window_.ign.fill.isUnread(201));
}

TEST_F(LargeWindowNotesTest, AnEditBeforeTheFirstReadFillsItsCellAlone) {
    key(window_.ign, 200, kKeyPlus);
    EXPECT_FALSE(window_.ign.fill.isUnread(200));
    EXPECT_TRUE(window_.ign.fill.isUnread(0));
}

TEST_F(LargeWindowNotesTest, ALoadedTuneHasAllCells) {
    window_.populateIGN();
    EXPECT_FALSE(window_.ign.fill.isUnread(0));
    key(window_.ign, 200, kKeyPlus);
    EXPECT_FALSE(window_.ign.fill.isUnread(201));
}

TEST_F(LargeWindowNotesTest, WhatWasSentAndAcknowledgedIsNotUnread) {
    readIgnitionHalf(0, 40);
    for (std::size_t cell = 160; cell < 320; ++cell) {
        main_.ecuMaps.ignition.sending(cell, 0);
    }
    main_.ecuMaps.ignition.acknowledged(160);
    machine_.pump.wait(400);
    EXPECT_FALSE(window_.ign.fill.isUnread(160));
}

TEST_F(WindowNotesTest, EachCellOfAPwmTableIsUnreadUntilItComes) {
    const std::array<std::uint8_t, 1> byte{0};
    main_.ecuMaps.pwm.read(70, byte);
    window_.populatePWMOUT();
    EXPECT_FALSE(window_.pwm.fill.isUnread(70));
    EXPECT_TRUE(window_.pwm.fill.isUnread(71));
}

class Marks3DTest : public GridEditingTest {
protected:
    Marks3DTest() {
        openPort();
        main_.TimerRequestData.Enabled = true;
        main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
    }
    [[nodiscard]] int engine() const { return frm3Dmap_.marks.Engine; }
    [[nodiscard]] int focus() const { return frm3Dmap_.marks.Focus; }
};

TEST_F(Marks3DTest, TheEnginesCellIsMarkedWhileItIsInTheMap) {
    tables_.MapPlace = 35;
    window_.updateMapPlace();
    EXPECT_EQ(engine(), 35);
    tables_.MapPlace = 160;
    window_.updateMapPlace();
    EXPECT_EQ(engine(), Marks3D::kNoCell);
}

TEST_F(Marks3DTest, TheEnginesCellIsNotMarkedInAMapOfAnotherSizeThanTheEcus) {
    tables_.SWType = 14;
    tables_.MapPlace = 35;
    window_.updateMapPlace();
    EXPECT_EQ(engine(), Marks3D::kNoCell);
    tables_.SWType = 11;
    window_.updateMapPlace();
    EXPECT_EQ(engine(), 35);
}

TEST_F(Marks3DTest, TheFocusIsMarkedWhileItsMapIsOnShow) {
    frm3Dmap_.open();
    frm3Dmap_.Update3D(kFuelTable);
    window_.setFocus(&window_.fuel(20));
    EXPECT_EQ(focus(), 20);
    window_.setFocus(&window_.ign(30));
    EXPECT_EQ(focus(), Marks3D::kNoCell);
    frm3Dmap_.Update3D(kIgnitionTable);
    EXPECT_EQ(focus(), 30);
    window_.setFocus(&window_.btnHelp);
    EXPECT_EQ(focus(), Marks3D::kNoCell);
}

TEST_F(Marks3DTest, NeitherIsMarkedOnceTheWindowIsClosed) {
    frm3Dmap_.open();
    tables_.MapPlace = 35;
    window_.updateMapPlace();
    window_.setFocus(&window_.ign(30));
    EXPECT_EQ(focus(), 30);
    static_cast<void>(window_.unload());
    EXPECT_EQ(engine(), Marks3D::kNoCell);
    EXPECT_EQ(focus(), Marks3D::kNoCell);
}

class TwoWindowsMarks3DTest : public Marks3DTest {
protected:
    TwoWindowsMarks3DTest() {
        frm3Dmap_.open();
        other_.show();
        window_.setFocus(&window_.ign(30));
        other_.setFocus(&other_.ign(40));
    }

    BenchWindow other_{machine_.machine, context_, kLargeMaps};
};

TEST_F(TwoWindowsMarks3DTest, TheFocusThatMovedLastIsMarked) {
    EXPECT_EQ(focus(), 40);
    window_.setFocus(&window_.btnHelp);
    EXPECT_EQ(focus(), 40);
    other_.setFocus(&other_.btnHelp);
    EXPECT_EQ(focus(), Marks3D::kNoCell);
}

TEST_F(TwoWindowsMarks3DTest, AWindowThatClosesTakesItsOwnMarkAlone) {
    static_cast<void>(window_.unload());
    EXPECT_EQ(focus(), 40);
    static_cast<void>(other_.unload());
    EXPECT_EQ(focus(), Marks3D::kNoCell);
}

TEST_F(TwoWindowsMarks3DTest, AKeyBringsTheMarkBackToItsWindow) {
    window_.ign(30).keyDown(kKeyPlus, kNoShift);
    EXPECT_EQ(focus(), 30);
}

TEST_F(TwoWindowsMarks3DTest, AKeyOfAScriptMovesNoMark) {
    window_.ign(31).keyDown(kKeyPlus, kNoShift);
    EXPECT_EQ(focus(), 40);
}

TEST_F(TwoWindowsMarks3DTest, TheEngineIsMarkedByTheSizeOfTheMapOnShow) {
    frm3Dmap_.setMapSizes(20, 16);
    tables_.MapPlace = 200;
    other_.updateMapPlace();
    EXPECT_EQ(engine(), 200);
    window_.updateMapPlace();
    EXPECT_EQ(engine(), 200);
}

TEST_F(Marks3DTest, TheViewSaysWhichMapItShows) {
    frm3Dmap_.open();
    EXPECT_EQ(frm3Dmap_.tableName(), "Ignition map");
    EXPECT_EQ(frm3Dmap_.tableScale(), "16 by 10, raw counts");
    frm3Dmap_.Update3D(kPwmTable);
    EXPECT_EQ(frm3Dmap_.tableName(), "PWM table");
    frm3Dmap_.setMapSizes(20, 16);
    frm3Dmap_.Update3D(kFuelTable);
    EXPECT_EQ(frm3Dmap_.tableName(), "Fuel map");
    EXPECT_EQ(frm3Dmap_.tableScale(), "20 by 16, raw counts");
}

}  // namespace
}  // namespace korvane::maps
