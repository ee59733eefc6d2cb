#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/tables/LiveChannel.h"
#include "views/CutTexts.h"
#include "views/ProgramViews.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;

// A map window that has read nothing yet.
struct MapNotesTest : testing::Test, ProgramViews {
    MapNotesTest() { tables.Features = 0xFFFF; }

    template <class Window>
    Window& open(int width = 1340, int height = 690) {
        constexpr bool large = std::is_same_v<Window, maps::FrmMaps_Large>;
        large ? program.mapWindows().openLarge() : program.mapWindows().open();
        auto& form = dynamic_cast<Window&>(*windows.loaded().back());
        maps_ = &form;
        lookAt(form);
        form.resize(width * 15, height * 15);
        frame();
        return form;
    }

    [[nodiscard]] std::string text(const char* name) const { return find<Readout>(name).text().toStdString(); }
    [[nodiscard]] QLabel& neverReadOn(const char* grid) const {
        return *find(grid).findChild<QLabel*>(QStringLiteral("neverRead"));
    }

    void run() {
        using core::LiveChannel;
        const auto set = [&](LiveChannel channel, double value) {
            tables.liveValues[core::indexOf(channel)].value = value;
        };
        set(LiveChannel::UpdateSpeed, 16);
        set(LiveChannel::Rpm, 10500);
        set(LiveChannel::Pressure, 1.35);
        set(LiveChannel::Lambda, 12.46);
        set(LiveChannel::Throttle, 100);
        set(LiveChannel::InjectionDuty, 255);
        tables.MapPlace = 17;
        maps_->showNotes();
        frame();
    }
    void edit(maps::MapForm& form) {
        form.setFocus(&form.fuel(5));
        form.fuel(5).keyDown(controls::kKeyPlus, 0);
        frame();
    }

    void expectNothingCut() const {
        EXPECT_THAT(cutTexts(view()), IsEmpty());
        expectNoScrolling();
    }
    void expectNoScrolling() const {
        EXPECT_EQ(view().findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
    }

    maps::PaneWindow* maps_ = nullptr;
};

TEST_F(MapNotesTest, TheHeaderShowsTheRunningEngine) {
    open<maps::FrmMaps>();
    EXPECT_EQ(text("stripRpm"), "\u2013");
    run();
    EXPECT_EQ(text("stripRpm"), "10500");
    EXPECT_EQ(text("stripLoad"), "1.35");
    EXPECT_EQ(text("stripMixture"), "12.46/12.5");
    EXPECT_EQ(text("stripThrottle"), "100");
    EXPECT_EQ(text("stripDuty"), "99.6");
    EXPECT_EQ(find("stripMixture").accessibleName(), "AFR/target");
    expectNothingCut();
}

TEST_F(MapNotesTest, TheProgressOfATransferTakesThePlaceOfTheRunningEngine) {
    auto& form = open<maps::FrmMaps>();
    EXPECT_TRUE(find("liveStrip").isVisible());
    form.prgTransfer.start(160);
    frame();
    EXPECT_FALSE(find("liveStrip").isVisible());
    form.prgTransfer.Visible = false;
    frame();
    EXPECT_TRUE(find("liveStrip").isVisible());
}

TEST_F(MapNotesTest, ANumberThatStaysIsNotPaintedAgain) {
    open<maps::FrmMaps>();
    run();
    const PaintCounter paints(find("stripRpm"));
    run();
    EXPECT_EQ(paints.count(), 0);
}

TEST_F(MapNotesTest, TheBoxWithoutAFuelMapHasNoPulse) {
    tables.SWType = 30;
    open<maps::FrmMaps_QV_ign>();
    EXPECT_EQ(view().findChild<QWidget*>(QStringLiteral("stripPulse")), nullptr);
    EXPECT_NE(view().findChild<QWidget*>(QStringLiteral("stripThrottle")), nullptr);
    run();
    EXPECT_EQ(text("stripMixture"), "12.46");
    EXPECT_EQ(find("stripMixture").accessibleName(), "AFR");
}

TEST_F(MapNotesTest, ASilentEcuIsSeenBesideTheCaption) {
    auto& form = open<maps::FrmMaps>();
    form.btnReadFuel.press();
    frame();
    EXPECT_EQ(text("transferNote"), "Fuel: the port is closed");
    EXPECT_NE(find("transferNote").palette().color(QPalette::WindowText), view().palette().color(QPalette::WindowText));
    expectNothingCut();
}

TEST_F(MapNotesTest, ASilentBoxIsSeenBesideTheCaption) {
    tables.SWType = 30;
    auto& form = open<maps::FrmMaps_QV_ign>();
    form.launchControl.btnRead.press();
    frame();
    EXPECT_EQ(text("answersNote"), "Parameters: the port is closed");
    EXPECT_NE(find("answersNote").palette().color(QPalette::WindowText), view().palette().color(QPalette::WindowText));
    expectNothingCut();
}

TEST_F(MapNotesTest, ASilentLimiterIsSeenBesideTheCaption) {
    program.mapWindows().openLimiter();
    auto& form = dynamic_cast<maps::FrmMaps_ign_limiter&>(*windows.loaded().back());
    lookAt(form);
    form.btnReadData.press();
    frame();
    EXPECT_EQ(text("answersNote"), "Parameters: the port is closed");
    expectNothingCut();
}

TEST_F(MapNotesTest, ALineAcrossTheWindowTellsOfOtherSizes) {
    auto& form = open<maps::FrmMaps_Large>();
    EXPECT_FALSE(find("sizeNote").isVisible());
    tables.SWType = 11;
    form.showNotes();
    frame();
    ASSERT_TRUE(find("sizeNote").isVisible());
    EXPECT_EQ(find("sizeNote").width(), find("FrameFuel").width());
    EXPECT_TRUE(isWhole(find("sizeNote")));
    expectNoScrolling();
    tables.SWType = 15;
    form.showNotes();
    frame();
    EXPECT_FALSE(find("sizeNote").isVisible());
}

// In mode 2 a count is 512 ticks of 18.432 MHz, and 768 with multiplier 3: 14 of them last 0.3889 ms and 0.5833 ms.
TEST_F(MapNotesTest, ALineTellsThatTheFuelTimesAreOfOtherSettings) {
    auto& form = open<maps::FrmMaps>();
    const auto set = [this](int address, std::uint8_t value) {
        tables.EEParams.at(static_cast<std::size_t>(address)).value = value;
    };
    set(tables.addresses.INJ_MODE_OFFSET, 2);
    set(tables.addresses.INJ_MULTIPLIER_OFF, 0);
    pump.wait(1000);
    frame();
    EXPECT_FALSE(find("sizeNote").isVisible());
    tables.FuelMapIn[0] = 14;
    form.populateFuel();
    EXPECT_EQ(form.fuel(0).Text.get(), "0.388");
    set(tables.addresses.INJ_MULTIPLIER_OFF, 3);
    pump.wait(1000);
    frame();
    EXPECT_TRUE(find("sizeNote").isVisible());
    EXPECT_TRUE(isWhole(find("sizeNote")));
    EXPECT_THAT(form.sizeNote.words(), testing::HasSubstr("until it is read again or edited"));
    form.populateFuel();
    EXPECT_EQ(form.fuel(0).Text.get(), "0.583");
    pump.wait(1000);
    frame();
    EXPECT_FALSE(find("sizeNote").isVisible());
}

TEST_F(MapNotesTest, The3DViewKnowsWhichCellsWereNeverRead) {
    auto& form = open<maps::FrmMaps>();
    form.btnShow3D.press();
    EXPECT_EQ(program.frm3Dmap().unreadWords(), "160 of 160 cells were never read");
    window.ecuMaps.ignition.read(0, std::vector<std::uint8_t>(16));
    form.populateIGN();
    EXPECT_EQ(program.frm3Dmap().unreadWords(), "144 of 160 cells were never read");
    window.ecuMaps.ignition.read(0, std::vector<std::uint8_t>(160));
    form.populateIGN();
    EXPECT_EQ(program.frm3Dmap().unreadWords(), "");
}

TEST_F(MapNotesTest, AGridThatWasNeverReadSaysSoAcrossItsMiddle) {
    auto& form = open<maps::FrmMaps>();
    auto& note = neverReadOn("txtFuel");
    ASSERT_TRUE(note.isVisible());
    auto& grid = find<MapGridView>("txtFuel");
    const QPoint middle = grid.cellRect(0).united(grid.cellRect(159)).center();
    EXPECT_LE((note.geometry().center() - middle).manhattanLength(), 2);
    form.populateFuel();
    frame();
    EXPECT_FALSE(note.isVisible());
    EXPECT_TRUE(neverReadOn("txtIgn").isVisible());
    EXPECT_TRUE(neverReadOn("txtInjAnalys").isHidden());
}

TEST_F(MapNotesTest, CellsThatAPartialReadLeftOutShowAQuestionMark) {
    auto& form = open<maps::FrmMaps_Large>();
    const std::vector<std::uint8_t> half(160, 40);
    std::copy(half.begin(), half.end(), tables.IgnMapIn.begin());
    std::copy(half.begin(), half.end(), tables.IgnMapOut.begin());
    form.context().connection.ecuMaps.ignition.read(0, half);
    form.populateIGN();
    frame();
    auto& grid = find<MapGridView>("txtIgn");
    EXPECT_EQ(grid.shown(159).text, "8");
    EXPECT_EQ(grid.shown(160).text, "?");
    EXPECT_EQ(grid.cell(160).text, "0");
    EXPECT_EQ(grid.stateOf(160), "not read from the ECU yet");
    grid.setTinted(true);
    EXPECT_EQ(grid.heatOf(0), grid.heatOf(160));
    form.context().connection.ecuMaps.ignition.read(160, half);
    form.populateIGN();
    frame();
    EXPECT_EQ(grid.shown(160).text, "0");
}

TEST_F(MapNotesTest, TheTextOverAGridLeavesItsCellsToTheMouse) {
    auto& form = open<maps::FrmMaps>();
    auto& note = neverReadOn("txtFuel");
    EXPECT_EQ(find("txtFuel").childAt(note.geometry().center()), nullptr);
    edit(form);
    EXPECT_FALSE(note.isVisible());
}

TEST_F(MapNotesTest, KeepOpenKeepsAWindowWithUnsentEdits) {
    auto& form = open<maps::FrmMaps>();
    edit(form);
    dialogs.answerQuestion({false, false});
    EXPECT_FALSE(view().close());
    EXPECT_TRUE(form.isLoaded());
    EXPECT_EQ(dialogs.takeQuestions().size(), 1U);
    dialogs.answerQuestion({true, false});
    EXPECT_TRUE(view().close());
    EXPECT_EQ(host.viewOf(form), nullptr);
    settle();
}

TEST_F(MapNotesTest, ScriptsCloseAWindowWithoutAQuestion) {
    auto& form = open<maps::FrmMaps>();
    edit(form);
    dialogs.answerQuestion({false, false});
    EXPECT_TRUE(form.unload());
    EXPECT_THAT(dialogs.takeQuestions(), IsEmpty());
    settle();
}

TEST_F(MapNotesTest, TheProgramAsksOnceForAllItsMapWindows) {
    auto& form = open<maps::FrmMaps>();
    edit(form);
    auto& main = *host.viewOf(window);
    dialogs.answerQuestion({false, false});
    main.close();
    EXPECT_FALSE(program.ended());
    EXPECT_TRUE(form.isLoaded());
    dialogs.answerQuestion({true, false});
    main.close();
    EXPECT_TRUE(program.ended());
    EXPECT_EQ(dialogs.takeQuestions().size(), 2U);
    settle();
}

TEST_F(MapNotesTest, AnAgreementHoldsUntilThePortIsClosed) {
    connect();
    auto& form = open<maps::FrmMaps>();
    edit(form);
    auto& main = *host.viewOf(window);
    dialogs.answerQuestion({true, false});
    main.close();
    EXPECT_FALSE(program.ended());
    dialogs.answerQuestion({false, false});
    main.close();
    EXPECT_EQ(dialogs.takeQuestions().size(), 1U);
    pump.wait(1500);
    EXPECT_TRUE(program.ended());
    settle();
}

TEST_F(MapNotesTest, QuittingByAnOrderFromOutsideAsksNothing) {
    auto& form = open<maps::FrmMaps>();
    edit(form);
    dialogs.answerQuestion({false, false});
    program.quit();
    EXPECT_TRUE(program.ended());
    EXPECT_THAT(dialogs.takeQuestions(), IsEmpty());
    settle();
}

// As on a screen of 1366 by 768.
template <class Window>
struct RightColumn : MapNotesTest {
    void expectNoBarWith(bool failed) {
        auto& form = this->template open<Window>();
        const int number = form.verifyReport().begin("Fuel", [] {});
        form.verifyReport().end(number, failed ? "cell 18 is 90, sent 93" : "verified", failed);
        frame();
        EXPECT_TRUE(find("verifyLine").isVisible());
        EXPECT_EQ(find("sendAgain").isVisible(), failed);
        for (const auto* const area : view().template findChildren<QScrollArea*>()) {
            EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
        }
    }
};
using Forms = testing::Types<maps::FrmMaps, maps::FrmMaps_Large>;
TYPED_TEST_SUITE(RightColumn, Forms);

TYPED_TEST(RightColumn, HasNoScrollBarBehindAVerification) {
    this->expectNoBarWith(false);
}
TYPED_TEST(RightColumn, HasNoScrollBarBehindOneThatHasFailed) {
    this->expectNoBarWith(true);
}

TEST_F(MapNotesTest, TheStatusLineIsNeverDrawnSmallAndTellsWhatItCuts) {
    auto& form = open<maps::FrmMaps>();
    form.setFocus(nullptr);
    frame();
    EXPECT_EQ(text("cellStatus"), "No cell has the focus");
    edit(form);
    window.ecuMaps.fuel.changed(7, 1);
    window.ecuMaps.ignition.changed(7, 1);
    window.ecuMaps.pwm.changed(70, 1);
    frame();
    for (const char* name : {"cellStatus", "unsentStatus"}) {
        EXPECT_EQ(find<Readout>(name).shrink(), 1) << name;
        EXPECT_GE(find<Readout>(name).width(), 50) << name;
    }
    EXPECT_FALSE(find<Readout>("unsentStatus").isCut());
    EXPECT_TRUE(find<Readout>("cellStatus").isCut());
    auto& cell = find("cellStatus");
    QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), cell.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&cell, &help);
    EXPECT_EQ(QToolTip::text().toStdString(), text("cellStatus"));
}

TEST_F(MapNotesTest, AMiscBoxThatTheEcuDoesNotHaveIsMarked) {
    auto& form = open<maps::FrmMaps>();
    window.ecuMisc.has({0x34, 0x21, 0x28, 0x23, 0, 0, 10, 128, 6});
    tables.MiscBlock = {0, 0x34, 0x21, 0x28, 0x23, 0, 0, 10, 128, 6};
    form.showMiscOfFile();
    frame();
    const auto plain = find("txtMisc(0)").grab().toImage();
    EXPECT_EQ(find("txtMisc(0)").accessibleDescription(), "");
    form.txtMisc(0).Text = "8000";
    frame();
    EXPECT_EQ(find("txtMisc(0)").accessibleDescription(), "Not sent: the ECU has 8500");
    EXPECT_EQ(text("unsentStatus"), "Not sent: 1 misc");
    const auto corner = [](const QImage& image) { return image.pixelColor(image.width() - 4, 3); };
    EXPECT_NE(corner(find("txtMisc(0)").grab().toImage()), corner(plain));
}

TEST_F(MapNotesTest, TheProgramNamesSettingsThatAreNotSaved) {
    auto& settings = program.frmMisc();
    settings.show();
    settings.TimerInitialGetData.Enabled = false;
    settings.UpdateReadEE(12, tables.addresses.IDLE_ADV0, false);
    settings.txtIdleAdv(0).Text = "13";
    settings.txtIdleAdv(1).Text = "13";
    dialogs.answerQuestion({false, false});
    host.viewOf(window)->close();
    EXPECT_FALSE(program.ended());
    const auto questions = dialogs.takeQuestions();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_EQ(questions.front().text, "2 settings boxes are not saved");
    host.viewOf(settings)->close();
    EXPECT_THAT(dialogs.takeQuestions(), IsEmpty()) << "the window is only hidden";
    settle();
}

}  // namespace
}  // namespace korvane::views
