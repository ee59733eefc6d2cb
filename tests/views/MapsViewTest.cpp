#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/VirtualProgram.h"
#include "views/CutTexts.h"
#include "views/Events.h"
#include "views/Views.h"
#include "views/maps/MapGridView.h"
#include "views/maps/MapsView.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kAllFeatures = 0xFFFF;

// An open map window with invented maps, on a line without a device.
struct MapsViewTest : testing::Test, support::VirtualProgram {
    template <class Window>
    Window& open(int width = 1366, int height = 728) {
        addViews(host);
        tables.Features = kAllFeatures;
        constexpr bool large = std::is_same_v<Window, maps::FrmMaps_Large>;
        large ? program.mapWindows().openLarge() : program.mapWindows().open();
        auto& form = dynamic_cast<Window&>(*windows.loaded().back());
        maps_ = &form;
        pump.wait(1000);
        for (int cell = 0; cell < form.fuel.geometry.cells(); ++cell) {
            const auto at = static_cast<std::size_t>(cell);
            tables.FuelMapIn.at(at) = tables.FuelMapOut.at(at) = static_cast<std::uint8_t>(20 + cell / 2);
            tables.IgnMapIn.at(at) = tables.IgnMapOut.at(at) = static_cast<std::uint8_t>(255 - cell / 2);
        }
        form.populateFuel();
        form.populateIGN();
        form.populatePWMOUT();
        form.resize(width * 15, height * 15);
        view().activateWindow();
        settle();
        return form;
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(*maps_); }
    [[nodiscard]] QWidget* find(const std::string& name) const {
        return view().findChild<QWidget*>(QString::fromStdString(name));
    }
    [[nodiscard]] bool isSeen(const std::string& name) const { return find(name)->isVisible(); }
    [[nodiscard]] MapGridView& grid(const char* name) const { return *dynamic_cast<MapGridView*>(find(name)); }
    [[nodiscard]] static bool isEdgeLabel(const controls::Control& control) {
        return control.name().starts_with("lblRpm") || control.name().starts_with("lblMap");
    }
    [[nodiscard]] static bool isCell(const controls::Control& control) {
        const auto name = control.name();
        return name == "txtFuel" || name == "txtIgn" || name == "txtPWM" || name == "txtInjAnalys";
    }
    [[nodiscard]] static bool isShown(const controls::Control& control) {
        return control.kind() != "timer" && !isEdgeLabel(control);
    }
    [[nodiscard]] static std::string widgetName(const controls::Control& control) {
        return isCell(control) ? std::string(control.name()) : control.path();
    }

    void frame() {
        host.clock().tick();
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
        views::key(*view().focusWidget(), key, modifiers, text);
    }

    void expectNothingCut() const {
        EXPECT_THAT(cutTexts(view()), IsEmpty());
        auto* const scroll = view().findChild<QScrollArea*>();
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    }

    void expectWidgetsOfTheirNames() const {
        for (const auto* control : maps_->controls()) {
            const auto found = view().findChildren<QWidget*>(QString::fromStdString(widgetName(*control)));
            EXPECT_EQ(found.size(), isShown(*control) ? 1 : 0) << control->path();
            if (isShown(*control) && control->container() != nullptr) {
                auto* const around = find(control->container()->path());
                EXPECT_TRUE(around->isAncestorOf(found.front())) << control->path();
            }
        }
    }
    void expectNames() const {
        for (const auto* control : maps_->controls()) {
            if (isShown(*control) && control->kind() != "frame" && control->name() != "picOptions") {
                auto* const spoken = QAccessible::queryAccessibleInterface(find(widgetName(*control)));
                ASSERT_NE(spoken, nullptr);
                EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty()) << control->path();
            }
        }
    }
    void expectDifferentMnemonics() const {
        std::map<QChar, QString> seen;
        for (const auto* button : view().findChildren<QAbstractButton*>()) {
            const QString text = button->text().remove(QStringLiteral("&&"));
            if (const auto at = text.indexOf(u'&'); at >= 0) {
                const auto [place, fresh] = seen.emplace(text[at + 1].toLower(), text);
                EXPECT_TRUE(fresh) << place->second.toStdString() << " and " << text.toStdString();
            }
        }
        EXPECT_GE(seen.size(), 20U);
    }

    ViewHost host{windows};
    maps::MapForm* maps_ = nullptr;
};

TEST_F(MapsViewTest, EveryControlHasOneWidgetOfItsName) {
    open<maps::FrmMaps>();
    expectWidgetsOfTheirNames();
}

TEST_F(MapsViewTest, EveryControlOfTheLargeWindowHasOneWidgetOfItsName) {
    open<maps::FrmMaps_Large>();
    expectWidgetsOfTheirNames();
}

TEST_F(MapsViewTest, EveryWidgetThatAUserReachesHasAnAccessibleName) {
    auto& form = open<maps::FrmMaps>();
    form.CheckMisc(6).Value = 1;
    frame();
    expectNames();
    EXPECT_EQ(find("CheckMisc(6)")->accessibleName(), "Bit 6");
    EXPECT_EQ(find("txtMisc(0)")->accessibleName(), "RPM Limit");
}

TEST_F(MapsViewTest, EveryWidgetOfTheLargeWindowHasAnAccessibleName) {
    open<maps::FrmMaps_Large>();
    expectNames();
}

TEST_F(MapsViewTest, NoTwoMnemonicsAreTheSame) {
    open<maps::FrmMaps>();
    expectDifferentMnemonics();
}

TEST_F(MapsViewTest, NoTwoMnemonicsOfTheLargeWindowAreTheSame) {
    open<maps::FrmMaps_Large>();
    expectDifferentMnemonics();
}

TEST_F(MapsViewTest, NothingIsCutOnASmallLaptop) {
    auto& form = open<maps::FrmMaps>();
    form.prgTransfer.start(160);
    form.Caption = "PWM table have been sent to ECU 12:34:56";
    frame();
    expectNothingCut();
    form.chkShowPwm.Value = 1;
    frame();
    expectNothingCut();
    form.chkShowPwm.Value = 0;
    form.chkInjAnal.Value = 1;
    frame();
    expectNothingCut();
}

TEST_F(MapsViewTest, NothingOfTheLargeWindowIsCutOnASmallLaptop) {
    auto& form = open<maps::FrmMaps_Large>();
    form.prgTransfer.start(320);
    form.chkInjAnal.Value = 1;
    for (int tab = 1; tab <= 4; ++tab) {
        form.TabStrip1.SelectedItem = tab;
        frame();
        expectNothingCut();
    }
}

TEST_F(MapsViewTest, NothingIsCutWithTextsOfTwiceTheSize) {
    open<maps::FrmMaps>();
    QFont large = view().font();
    large.setPixelSize(QFontInfo(large).pixelSize() * 2);
    view().setFont(large);
    settle();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    EXPECT_GT(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
    maps_->resize(1366 * 2 * 15, 728 * 2 * 15);
    settle();
    expectNothingCut();
}

TEST_F(MapsViewTest, CellsAreLargeEnoughToRead) {
    open<maps::FrmMaps>();
    EXPECT_GE(grid("txtFuel").cellRect(0).width(), 54);
    EXPECT_GE(grid("txtFuel").cellRect(0).height(), 24);
    EXPECT_EQ(grid("txtFuel").cellRect(0).width(), grid("txtIgn").cellRect(0).width());
}

TEST_F(MapsViewTest, ATinyScreenScrollsToTheCellWithTheFocus) {
    auto& form = open<maps::FrmMaps>(683, 384);
    auto* const scroll = view().findChild<QScrollArea*>();
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    form.setFocus(&form.ign(159));
    frame();
    const QPoint at = grid("txtIgn").mapTo(&view(), grid("txtIgn").cellRect(159).center());
    EXPECT_TRUE(view().rect().contains(at));
}

TEST_F(MapsViewTest, TheStatusLineRepeatsTheCaptionWithTheProgressBesideIt) {
    auto& form = open<maps::FrmMaps>();
    auto* const status = dynamic_cast<Readout*>(find("status"));
    EXPECT_EQ(status->text(), QString::fromStdString(form.Caption));
    EXPECT_FALSE(isSeen("prgTransfer"));
    form.Caption = "Sending 12:00:00";
    form.prgTransfer.start(160);
    form.prgTransfer.Value = 80;
    frame();
    EXPECT_EQ(status->text(), "Sending 12:00:00");
    ASSERT_TRUE(isSeen("prgTransfer"));
    EXPECT_EQ(dynamic_cast<QProgressBar*>(find("prgTransfer"))->value(), 80);
    EXPECT_GT(find("prgTransfer")->x(), status->x());
    EXPECT_EQ(find("prgTransfer")->geometry().center().y(), status->geometry().center().y());
}

TEST_F(MapsViewTest, ThePwmPaneLiesOverTheIgnitionGrid) {
    auto& form = open<maps::FrmMaps>();
    EXPECT_TRUE(isSeen("txtIgn"));
    EXPECT_FALSE(isSeen("txtPWM"));
    EXPECT_FALSE(isSeen("txtInjAnalys"));
    click(*find("chkShowPwm"), QPoint(5, find("chkShowPwm")->height() / 2));
    EXPECT_EQ(form.chkShowPwm.Value, 1);
    EXPECT_FALSE(isSeen("txtIgn"));
    EXPECT_TRUE(isSeen("txtPWM"));
    EXPECT_TRUE(isSeen("btnReadPWM"));
    EXPECT_FALSE(isSeen("btnReadIgn"));
    form.chkShowPwm.Value = 0;
    frame();
    EXPECT_TRUE(isSeen("txtIgn"));
    EXPECT_FALSE(isSeen("txtPWM"));
    EXPECT_FALSE(isSeen("btnSavePWM"));
}

TEST_F(MapsViewTest, TheAnalyserTakesThePlaceOfTheIgnitionGrid) {
    auto& form = open<maps::FrmMaps>();
    EXPECT_FALSE(isSeen("chkUseTuningAgent"));
    form.chkInjAnal.Value = 1;
    frame();
    EXPECT_TRUE(isSeen("txtInjAnalys"));
    EXPECT_FALSE(isSeen("txtIgn"));
    for (const char* name : {"chkUseTuningAgent", "chkSimplemode", "chkModifyInjSetpoint", "imgAgentLed"}) {
        EXPECT_TRUE(isSeen(name)) << name;
    }
    EXPECT_FALSE(find("btnReadIgn")->isEnabled());
    form.chkInjAnal.Value = 0;
    frame();
    EXPECT_TRUE(isSeen("txtIgn"));
    EXPECT_FALSE(isSeen("imgAgentLed"));
}

TEST_F(MapsViewTest, EachTabOfTheLargeWindowShowsItsGrid) {
    auto& form = open<maps::FrmMaps_Large>();
    auto* const tabs = dynamic_cast<QTabBar*>(find("TabStrip1"));
    const std::vector<std::string> names{"txtFuel", "txtIgn", "txtPWM", "txtInjAnalys"};
    for (int tab = 0; tab < 4; ++tab) {
        click(*tabs, tabs->tabRect(tab).center());
        EXPECT_EQ(form.TabStrip1.SelectedItem, tab + 1);
        for (int other = 0; other < 4; ++other) {
            EXPECT_EQ(isSeen(names[static_cast<std::size_t>(other)]), other == tab) << tab << other;
        }
    }
    EXPECT_EQ(grid("txtFuel").geometry().columns, 20);
}

TEST_F(MapsViewTest, TabGoesFromGridToGridAndOnToTheButtons) {
    auto& form = open<maps::FrmMaps>();
    form.setFocus(&form.fuel(40));
    std::vector<std::string> visited;
    for (int i = 0; i < 7; ++i) {
        visited.push_back(view().focusWidget()->objectName().toStdString());
        press(Qt::Key_Tab);
    }
    EXPECT_THAT(visited, ElementsAre("txtFuel", "txtIgn", "btnReadFuel", "btnWriteFuel", "btnReadIgn", "btnWriteIgn",
                                     "btnReadMisc"));
}

TEST_F(MapsViewTest, ABlockIsSelectedAndRaisedByKeys) {
    auto& form = open<maps::FrmMaps>();
    click(grid("txtIgn"), grid("txtIgn").cellRect(20).center());
    ASSERT_EQ(form.activeControl(), &form.ign(20));
    const int before = tables.IgnMapOut.at(21);
    keyDown(*view().focusWidget(), Qt::Key_Shift);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    keyUp(*view().focusWidget(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_EQ(form.ign(21).BackColor, controls::kGreen);
    press(Qt::Key_Minus, Qt::KeypadModifier, "-");
    EXPECT_EQ(tables.IgnMapOut.at(20), before - 1);
    EXPECT_EQ(tables.IgnMapOut.at(21), before - 1);
    EXPECT_EQ(tables.IgnMapOut.at(22), before - 2);
    EXPECT_EQ(grid("txtIgn").cell(21).fore, controls::kBlue);
    EXPECT_EQ(grid("txtIgn").cell(21).back, controls::kGreen);
}

// Two cells, the focus on the second: what Shift alone does there would make the block one cell.
TEST_F(MapsViewTest, PlusThatNeedsShiftRaisesTheWholeBlock) {
    auto& form = open<maps::FrmMaps>();
    click(grid("txtIgn"), grid("txtIgn").cellRect(100).center());
    const int first = tables.IgnMapOut.at(100);
    const int second = tables.IgnMapOut.at(101);
    keyDown(*view().focusWidget(), Qt::Key_Shift);
    press(Qt::Key_Right, Qt::ShiftModifier);
    keyUp(*view().focusWidget(), Qt::Key_Shift, Qt::ShiftModifier);
    keyDown(*view().focusWidget(), Qt::Key_Shift);
    press(Qt::Key_Plus, Qt::ShiftModifier, "+");
    keyUp(*view().focusWidget(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_EQ(tables.IgnMapOut.at(100), first + 1);
    EXPECT_EQ(tables.IgnMapOut.at(101), second + 1);
    EXPECT_EQ(form.ign.SelFirst, 101);
    EXPECT_EQ(form.ign.SelLast, 102);
}

TEST_F(MapsViewTest, TheRunningCellIsRedInEachGridAndAnEditedNumberThereCanBeRead) {
    auto& form = open<maps::FrmMaps>();
    form.setFocus(&form.fuel(0));
    tables.FuelMapOut.at(50) = 9;
    tables.MapPlace = 50;
    form.populateFuelOUT();
    form.updateMapPlace();
    frame();
    auto& fuel = grid("txtFuel");
    const QImage image = fuel.grab(fuel.cellRect(50)).toImage();
    EXPECT_EQ(image.pixelColor(1, 1), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(6, 5), QColor(255, 255, 255));
    auto& ign = grid("txtIgn");
    EXPECT_EQ(ign.grab(ign.cellRect(50)).toImage().pixelColor(6, 5), QColor(255, 0, 0));
}

TEST_F(MapsViewTest, AMapWindowClosesWithItsView) {
    auto& form = open<maps::FrmMaps>();
    EXPECT_TRUE(view().close());
    EXPECT_EQ(host.viewOf(form), nullptr);
    pump.wait(500);
    settle();
}

}  // namespace
}  // namespace korvane::views
