#include "MapsBench.h"
#include "core/Numbers.h"
#include "maps/MapForm.h"

namespace korvane::maps {
namespace {

using controls::kRed;
using controls::kWhite;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class MapFormTest : public MapsBench {
protected:
    FrmMaps& openMaps() {
        maps_ = std::make_unique<FrmMaps>(machine_.machine, context_);
        maps_->show();
        return *maps_;
    }
    FrmMaps_Large& openLarge() {
        large_ = std::make_unique<FrmMaps_Large>(machine_.machine, context_);
        large_->show();
        return *large_;
    }

    std::unique_ptr<FrmMaps> maps_;
    std::unique_ptr<FrmMaps_Large> large_;
};

TEST_F(MapFormTest, TheGridsHaveTheirLabels) {
    auto& window = openMaps();
    EXPECT_EQ(window.Caption.get(), "Korvane Tuner, Maps ");
    EXPECT_EQ(window.fuel.cells.count(), 160);
    EXPECT_EQ(window.fuel.columnLabels(0).Caption.get(), "1000");
    EXPECT_EQ(window.ign.columnLabels(15).Caption.get(), "8500");
    EXPECT_EQ(window.fuel.rowLabels(0).Caption.get(), "kuorma");
    EXPECT_EQ(window.fuel.rowLabels(1).Caption.get(), "10-20");
    EXPECT_EQ(window.pwm.rowLabels(9).Caption.get(), "90-100");
    EXPECT_TRUE(window.fuel(0).Locked);
    for (auto* grid : {&window.fuel, &window.ign, &window.pwm}) {
        EXPECT_EQ((*grid)(159).BackColor.get(), kWhite);
    }
}

TEST_F(MapFormTest, TheLargeGridsHaveTwentyColumnsAndSixteenRows) {
    auto& window = openLarge();
    EXPECT_EQ(window.Caption.get(), "Korvane Tuner, Maps, Large ");
    EXPECT_EQ(window.ign.cells.count(), 320);
    EXPECT_EQ(window.fuel.columnLabels(19).Caption.get(), "10500");
    EXPECT_EQ(window.fuel.rowLabels(15).Caption.get(), "150-160");
}

// In mode 1 a count is 1014000 / 18432 us on the ordinary window; on the large one the multiplier 6 makes it 2 * 768000
// / 18432 us. 36 counts are 1.9804 and 3 ms.
TEST_F(MapFormTest, EachWindowHasTheScaleOfItsMaps) {
    setParameter(tables_.addresses.INJ_MODE_OFFSET, 1);
    setParameter(tables_.addresses.INJ_MULTIPLIER_OFF, 6);
    tables_.FuelMapIn.fill(36);
    openMaps().populateFuel();
    EXPECT_EQ(maps_->fuel(17).Text.get(), "1.98");
    openLarge().populateFuel();
    EXPECT_EQ(large_->fuel(17).Text.get(), "3");
}

// Label r stands at (r + 1) * height * 1.1 + 200; cells are 240 high: 464, 728, ..., 2840.
TEST_F(MapFormTest, ACellStandsUnderItsColumnAndBesideItsRow) {
    auto& window = openMaps();
    EXPECT_EQ(window.fuel.rowLabels(0).Top.get(), 464);
    EXPECT_EQ(window.fuel.rowLabels(9).Top.get(), 2840);
    EXPECT_EQ(window.fuel(17).Left.get(), window.fuel.columnLabels(1).Left.get());
    EXPECT_EQ(window.fuel(17).Top.get(), window.fuel.rowLabels(1).Top.get());
    EXPECT_LT(window.fuel(16).Left.get(), window.fuel(17).Left.get());
}

TEST_F(MapFormTest, TheFontsFollowTheScreen) {
    machine_.machine.screen.Width = 12000;
    EXPECT_EQ(openMaps().fuel(0).FontSize.get(), 6);
    EXPECT_EQ(maps_->fuel.rowLabels(0).FontSize.get(), 6);
    EXPECT_EQ(maps_->btnReadFuel.FontSize.get(), 7);
    EXPECT_FALSE(maps_->fuel(0).FontBold);
    machine_.machine.screen.Width = 12001;
    EXPECT_EQ(openMaps().fuel(0).FontSize.get(), 8);
    machine_.machine.screen.Width = 15700;
    EXPECT_FALSE(openMaps().fuel(0).FontBold);
    machine_.machine.screen.Width = 15701;
    EXPECT_TRUE(openMaps().fuel(0).FontBold);
    EXPECT_TRUE(maps_->fuel.columnLabels(0).FontBold);
    EXPECT_FALSE(maps_->btnReadFuel.FontBold);
}

TEST_F(MapFormTest, TargetsStartAtTheDefaultAndTheFirstPwmCellsAreDisabled) {
    auto& window = openMaps();
    EXPECT_EQ(window.analys(159).Text.get(), "12.5");
    EXPECT_EQ(window.analys(159).ToolTipText.get(), "12.5");
    EXPECT_FALSE(window.pwm(63).Enabled);
    EXPECT_TRUE(window.pwm(64).Enabled);
}

TEST_F(MapFormTest, TheFeatureWordDecidesWhatIsOffered) {
    tables_.Features = 1 << 5;
    auto& window = openMaps();
    EXPECT_TRUE(window.btnReadIgn.Enabled && window.btnWriteIgn.Enabled && window.txtMisc(3).Enabled);
    EXPECT_TRUE(window.chkFocusOnIGN.Enabled);
    EXPECT_FALSE(window.btnReadFuel.Enabled || window.btnWriteFuel.Enabled || window.txtMisc(2).Enabled);
    EXPECT_FALSE(window.chkFocusOnFuel.Enabled);
    EXPECT_FALSE(window.txtMisc(0).Enabled || window.txtMisc(1).Enabled);
    EXPECT_TRUE(window.CheckMisc(5).Enabled);
    EXPECT_FALSE(window.CheckMisc(4).Enabled);
}

TEST_F(MapFormTest, EachOtherFeatureHasItsBit) {
    tables_.Features = 1 << 3;
    EXPECT_TRUE(openMaps().btnReadFuel.Enabled);
    EXPECT_TRUE(maps_->chkFocusOnFuel.Enabled);
    EXPECT_FALSE(maps_->btnReadIgn.Enabled);
    tables_.Features = 1 << 15;
    EXPECT_TRUE(openMaps().txtMisc(0).Enabled);
    EXPECT_FALSE(maps_->txtMisc(1).Enabled);
    tables_.Features = 1 << 14;
    EXPECT_FALSE(openMaps().txtMisc(0).Enabled);
    EXPECT_TRUE(maps_->txtMisc(1).Enabled);
    tables_.Features = -1;
    EXPECT_TRUE(openMaps().CheckMisc(15).Enabled && maps_->CheckMisc(0).Enabled);
}

// 100 ms after the load the four requests go out in order, once.
TEST_F(MapFormTest, TheFirstReadsFollowTheLoad) {
    openPort();
    auto& window = openMaps();
    EXPECT_TRUE(window.isFormLoaded);
    machine_.pump.wait(99);
    EXPECT_THAT(machine_.recorder.arrivals, IsEmpty());
    machine_.pump.wait(1000);
    EXPECT_FALSE(window.TimerInitialGetData.Enabled);
    EXPECT_THAT(sent(), ElementsAre('m', 'f', 'a', 'p', 0, 0x8F));
    EXPECT_THAT(window.Caption.get(), StartsWith("PWM table Received "));
}

TEST_F(MapFormTest, WithThePortClosedNothingIsRead) {
    auto& window = openMaps();
    machine_.pump.wait(1000);
    EXPECT_EQ(window.Caption.get(), "Korvane Tuner, Maps ");
}

TEST_F(MapFormTest, OneRedCellWandersWithoutATrace) {
    auto& window = openMaps();
    tables_.MapPlace = 17;
    window.updateMapPlace();
    tables_.MapPlace = 18;
    window.updateMapPlace();
    for (auto* grid : {&window.fuel, &window.ign, &window.pwm}) {
        EXPECT_EQ((*grid)(17).BackColor.get(), kWhite);
        EXPECT_EQ((*grid)(18).BackColor.get(), kRed);
    }
    EXPECT_EQ(tables_.PrevMapPlace, 18);
}

TEST_F(MapFormTest, ATraceStaysUntilItsBoxIsUnticked) {
    auto& window = openMaps();
    EXPECT_EQ(window.chkTrace.Caption.get(), "Trace map route");
    window.chkTrace.press();
    for (const int place : {17, 18, 19}) {
        tables_.MapPlace = static_cast<std::int16_t>(place);
        window.updateMapPlace();
    }
    window.fuel(40).BackColor = 65280;
    EXPECT_EQ(window.ign(17).BackColor.get(), kRed);
    EXPECT_EQ(window.ign(18).BackColor.get(), kRed);
    window.chkTrace.press();
    for (const int place : {17, 18, 19}) {
        EXPECT_EQ(window.fuel(place).BackColor.get(), kWhite);
        EXPECT_EQ(window.pwm(place).BackColor.get(), kWhite);
    }
    EXPECT_EQ(window.fuel(40).BackColor.get(), 65280U) << "only red goes";
    window.updateMapPlace();
    EXPECT_EQ(window.fuel(19).BackColor.get(), kRed) << "the current cell comes back with the next packet";
}

TEST_F(MapFormTest, APlaceOutsideTheGridIsSurvived) {
    auto& window = openMaps();
    for (const int place : {160, 319, -1, 32767, -32768}) {
        tables_.MapPlace = static_cast<std::int16_t>(place);
        window.updateMapPlace();
        window.chkFocusOnFuel.Value = 1;
        machine_.pump.wait(400);
    }
    EXPECT_EQ(window.activeControl(), nullptr);
    tables_.MapPlace = 5;
    window.updateMapPlace();
    EXPECT_EQ(window.fuel(5).BackColor.get(), kRed);
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(MapFormTest, TheLastCellOfALargeMapIsMarked) {
    auto& window = openLarge();
    EXPECT_EQ(window.chkTrace.Caption.get(), "Trace map");
    EXPECT_EQ(window.chkFocusOnMAP.Caption.get(), "Lock focus");
    tables_.MapPlace = 319;
    window.updateMapPlace();
    EXPECT_EQ(window.fuel(319).BackColor.get(), kRed);
}

TEST_F(MapFormTest, TheFocusFollowsTheEngineEveryThirdOfASecond) {
    auto& window = openMaps();
    tables_.MapPlace = 20;
    window.chkFocusOnIGN.press();
    machine_.pump.wait(332);
    EXPECT_EQ(window.activeControl(), nullptr);
    machine_.pump.wait(1);
    EXPECT_EQ(window.activeControl(), &window.ign(20));
    EXPECT_EQ(window.ign(20).BackColor.get(), 65535U);
    window.chkFocusOnFuel.press();
    machine_.pump.wait(333);
    EXPECT_EQ(window.activeControl(), &window.fuel(20)) << "the fuel box wins";
}

TEST_F(MapFormTest, OnTheLargeWindowTheTabDecidesWhichCellIsFollowed) {
    auto& window = openLarge();
    tables_.MapPlace = 70;
    window.chkFocusOnMAP.press();
    machine_.pump.wait(333);
    EXPECT_EQ(window.activeControl(), &window.fuel(70));
    window.TabStrip1.choose(2);
    machine_.pump.wait(333);
    EXPECT_EQ(window.activeControl(), &window.ign(70));
    window.TabStrip1.choose(3);
    machine_.pump.wait(333);
    EXPECT_EQ(window.activeControl(), &window.pwm(70));
}

TEST_F(MapFormTest, ATabBringsItsPageIntoView) {
    auto& window = openLarge();
    EXPECT_EQ(window.TabStrip1.SelectedItem.get(), 1);
    EXPECT_TRUE(window.fuel(0).inSight() && window.fuel(0).usable());
    window.TabStrip1.choose(2);
    EXPECT_EQ(window.picOptions(1).Left.get(), 50);
    EXPECT_EQ(window.picOptions(1).Top.get(), 350);
    EXPECT_EQ(window.picOptions(2).Top.get(), 0) << "it comes to its place when its tab is clicked";
    EXPECT_TRUE(window.picOptions(1).Enabled);
    EXPECT_EQ(window.picOptions(0).Left.get(), -20000);
    EXPECT_FALSE(window.picOptions(0).Enabled);
    EXPECT_FALSE(window.fuel(0).inSight());
    EXPECT_TRUE(window.ign(0).inSight());
}

TEST_F(MapFormTest, ThePwmPaneTakesThePlaceOfTheIgnition) {
    auto& window = openMaps();
    EXPECT_EQ(window.FramePWM.Left.get(), -20000);
    EXPECT_TRUE(window.btnReadIgn.inSight() && window.btnWriteIgn.inSight());
    EXPECT_FALSE(window.btnReadPWM.inSight() || window.btnSavePWM.inSight());
    EXPECT_TRUE(window.chkInjAnal.Enabled);
    window.chkShowPwm.press();
    EXPECT_EQ(window.FramePWM.Left.get(), 0);
    EXPECT_EQ(window.btnReadIgn.Left.get(), -4000);
    EXPECT_EQ(window.btnWriteIgn.Left.get(), -6000);
    EXPECT_EQ(window.btnReadPWM.Left.get(), 4000);
    EXPECT_EQ(window.btnSavePWM.Left.get(), 6000);
    EXPECT_FALSE(window.chkInjAnal.Enabled);
    window.chkShowPwm.press();
    EXPECT_EQ(window.FramePWM.Left.get(), -20000);
    EXPECT_TRUE(window.btnReadIgn.inSight());
    EXPECT_TRUE(window.chkInjAnal.Enabled);
}

TEST_F(MapFormTest, TheAnalyserTakesThePlaceOfTheIgnition) {
    auto& window = openMaps();
    window.chkInjAnal.press();
    EXPECT_TRUE(window.analys(0).inSight());
    EXPECT_FALSE(window.ign(0).inSight());
    EXPECT_EQ(window.FrameInjAnalys.Left.get(), 0);
    EXPECT_EQ(window.FrameIgn.Left.get(), -20000);
    EXPECT_EQ(window.FramePWM.Left.get(), -20000);
    EXPECT_FALSE(window.btnReadIgn.Enabled || window.btnWriteIgn.Enabled || window.chkShowPwm.Enabled);
    EXPECT_FALSE(window.btnReadPWM.Enabled || window.btnSavePWM.Enabled);
    window.chkInjAnal.press();
    EXPECT_FALSE(window.analys(0).inSight());
    EXPECT_TRUE(window.ign(0).inSight());
    EXPECT_TRUE(window.btnReadIgn.Enabled && window.btnWriteIgn.Enabled && window.chkShowPwm.Enabled);
    EXPECT_TRUE(window.btnReadPWM.Enabled && window.btnSavePWM.Enabled);
}

// A script can tick the box also while the PWM pane is on show.
TEST_F(MapFormTest, TheAnalyserTakesThePlaceOfThePwmPaneToo) {
    auto& window = openMaps();
    window.chkShowPwm.press();
    window.chkInjAnal.Value = 1;
    EXPECT_EQ(window.FrameInjAnalys.Left.get(), 0);
    EXPECT_EQ(window.FramePWM.Left.get(), -20000);
    window.chkInjAnal.Value = 0;
    EXPECT_EQ(window.FramePWM.Left.get(), 0);
}

TEST_F(MapFormTest, OnTheLargeWindowTheAnalyserHasItsOwnPageButTheButtonsWait) {
    auto& window = openLarge();
    window.chkInjAnal.press();
    EXPECT_FALSE(window.btnReadIgn.Enabled || window.btnWriteIgn.Enabled);
    EXPECT_FALSE(window.btnReadPWM.Enabled || window.btnSavePWM.Enabled);
    EXPECT_EQ(window.TabStrip1.SelectedItem.get(), 1) << "the pages stay";
    window.chkInjAnal.press();
    EXPECT_TRUE(window.btnReadIgn.Enabled && window.btnWriteIgn.Enabled);
    EXPECT_TRUE(window.btnReadPWM.Enabled && window.btnSavePWM.Enabled);
}

// 0.5 * 250 + 23 = 148 = 0x94 of red.
TEST_F(MapFormTest, TheAnalyserIsPaintedEveryThirdOfASecondWhileItsBoxIsTicked) {
    auto& window = openMaps();
    analyser_.averages[17] = 13.0F;
    analyser_.proposals[17] = 0.5F;
    machine_.pump.wait(333);
    EXPECT_EQ(window.analys(17).Text.get(), "12.5") << "not ticked";
    window.chkInjAnal.press();
    machine_.pump.wait(332);
    EXPECT_EQ(window.analys(17).Text.get(), "12.5");
    machine_.pump.wait(1);
    EXPECT_EQ(window.analys(17).Text.get(), "13");
    EXPECT_EQ(window.analys(17).BackColor.get(), 0x00FF94U);
    window.chkInjAnal.press();
    analyser_.averages[17] = 14.0F;
    machine_.pump.wait(1000);
    EXPECT_EQ(window.analys(17).Text.get(), "13");
}

// No cell to go to, a cell that takes no focus, a page out of sight.
TEST_F(MapFormTest, TheAnalyserIsPaintedWhereverTheFocusCantFollow) {
    auto& window = openLarge();
    window.chkFocusOnMAP.press();
    window.chkInjAnal.press();
    float mean = 10.0F;
    const auto paintedAt = [&](int place, int tab) {
        tables_.MapPlace = static_cast<std::int16_t>(place);
        window.TabStrip1.choose(tab);
        mean += 1.0F;
        analyser_.averages[319] = mean;
        machine_.pump.wait(333);
        return window.analys(319).Text.get() == core::textOf(mean);
    };
    EXPECT_TRUE(paintedAt(500, 1));
    EXPECT_TRUE(paintedAt(10, 3));
    EXPECT_TRUE(paintedAt(70, 4));
    EXPECT_EQ(window.activeControl(), nullptr);
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(MapFormTest, The3DViewOpensWithTheWindowsLayout) {
    openMaps().btnShow3D.press();
    EXPECT_TRUE(frm3Dmap_.Visible);
    EXPECT_EQ(frm3Dmap_.Tag.get(), "VISIBLE");
    EXPECT_EQ(frm3Dmap_.MSChart1.ColumnCount.get(), 16);
    openLarge().btnShow3D.press();
    EXPECT_EQ(frm3Dmap_.MSChart1.ColumnCount.get(), 20);
    EXPECT_EQ(frm3Dmap_.MSChart1.rowLabelAt(15), "150 - 160 %");
}

TEST_F(MapFormTest, TheInjectorWindowGoesWithItsOpener) {
    auto& window = openMaps();
    window.btnInjScale.press();
    EXPECT_TRUE(frmInjScale_.Visible);
    static_cast<void>(window.unload());
    EXPECT_FALSE(frmInjScale_.isLoaded());
}

TEST_F(MapFormTest, TheHelpIsOneMessage) {
    openMaps().btnHelp.press();
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].title, "Ohje ");
    EXPECT_THAT(messages[0].text, StartsWith("Valitse haluamasi 'laatikko', josta lähtien haluat vaihtaa arvoja.\r\n"));
}

TEST_F(MapFormTest, WordsOfTheEepromReachTheLimits) {
    auto& window = openMaps();
    window.UpdateReadEE(6500, tables_.addresses.RPM_LIMIT_LOW_OFF, true);
    window.UpdateReadEE(6000, tables_.addresses.RPM_SHIFT_LOW_OFF, true);
    window.UpdateReadEE(1, tables_.addresses.INJ_OFF, true);
    EXPECT_EQ(window.txtMisc(0).Text.get(), "6500");
    EXPECT_EQ(window.txtMisc(1).Text.get(), "6000");
}

TEST_F(MapFormTest, TheAnalyserKnowsTheOpenWindow) {
    auto& window = openMaps();
    EXPECT_EQ(analyser_.mapWindow, &window);
    window.setSetpointToolTip(159, "13");
    EXPECT_EQ(window.analys(159).ToolTipText.get(), "13");
    window.setOnlineChanges(true);
    EXPECT_EQ(window.chkOnlineChanges.Value.get(), 1);
    window.setAgentLamp(controls::Picture::Red);
    EXPECT_EQ(window.imgAgentLed.Shown.get(), controls::Picture::Red);
}

// Cells count to 320 for the analyser whatever the map.
TEST_F(MapFormTest, WhatTheAnalyserAsksOfCellsBeyondTheGridIsPassedOver) {
    auto& window = openMaps();
    const auto before = tables_.FuelMapOut;
    for (const int cell : {-1, 160, 319, 320}) {
        window.setSetpointToolTip(cell, "1357");
        window.pressFuelKey(cell, controls::kKeyPlus, 0);
    }
    for (const auto* control : window.controls()) {
        EXPECT_NE(control->ToolTipText.get(), "1357") << control->path();
    }
    EXPECT_THAT(machine_.log.lines, IsEmpty());
    EXPECT_EQ(tables_.FuelMapOut, before);
    window.pressFuelKey(159, controls::kKeyPlus, 0);
    EXPECT_EQ(tables_.FuelMapOut[159], before[159] + 1);
}

TEST_F(MapFormTest, ABlockTakesTheAnalysersKeyWhateverTheCell) {
    auto& window = openMaps();
    window.fuel.SelFirst = 11;
    window.fuel.SelLast = 12;
    auto expected = tables_.FuelMapOut;
    for (const int cell : {50, 166}) {
        window.pressFuelKey(cell, controls::kKeyPlus, 0);
    }
    expected[10] = static_cast<std::uint8_t>(expected[10] + 2);
    expected[11] = static_cast<std::uint8_t>(expected[11] + 2);
    EXPECT_EQ(tables_.FuelMapOut, expected);
}

}  // namespace
}  // namespace korvane::maps
