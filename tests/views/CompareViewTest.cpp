#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTabBar>
#include <QToolButton>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include "keep/compare/FrmCompare.h"
#include "views/Events.h"
#include "views/ProgramViews.h"
#include "views/keep/DiffTable.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/ListTable.h"
#include "views/widgets/Palette.h"

namespace korvane::views {
namespace {

constexpr double kLegible = 4.5;

// A fuel map of 50 on the ECU, of which the desk has cell 17 at 53 and cell 18 at 48.
struct CompareViewTest : testing::Test, ProgramViews {
    CompareViewTest() {
        connect();
        receiveFrame('y', {0xFF, 0xFF, 0x0D, 0x3A, 11});
        receiveFrame('f', support::Bytes(160, 50));
        tables.FuelMapOut[17] = 53;
        tables.FuelMapOut[18] = 48;
        program.comparisons().open();
        form = dynamic_cast<keep::FrmCompare*>(windows.loaded().back());
        form->chkCounts.press();
        lookAt(*form);
        view().activateWindow();
        frame();
    }
    ~CompareViewTest() override { Palette::setLight(*qApp); }

    [[nodiscard]] DiffTable& table() { return find<DiffTable>("grdCells"); }
    [[nodiscard]] QString textAt(int row, int column) { return table().model()->index(row, column).data().toString(); }
    [[nodiscard]] QColor groundOf(int row, int column) {
        const auto cell = table().visualRect(table().model()->index(row, column));
        return table().viewport()->grab().toImage().pixelColor(cell.left() + 2, cell.top() + 2);
    }

    keep::FrmCompare* form = nullptr;
};

TEST_F(CompareViewTest, EachCellThatDiffersHasASignByMarkAndByColour) {
    EXPECT_EQ(textAt(1, 1), QStringLiteral("\u25B2 +3"));
    EXPECT_EQ(textAt(1, 2), QStringLiteral("\u25BC -2"));
    EXPECT_EQ(textAt(1, 3), QString());
    EXPECT_NE(groundOf(1, 1), groundOf(1, 2));
    EXPECT_NE(groundOf(1, 1), groundOf(1, 3));
    EXPECT_EQ(groundOf(0, 0), groundOf(1, 3));
}

TEST_F(CompareViewTest, ItsLinesCanBeSeenInTheDarkToo) {
    for (const bool dark : {false, true}) {
        dark ? Palette::setDark(*qApp) : Palette::setLight(*qApp);
        settle();
        const QRect cell = table().visualRect(table().model()->index(2, 3));
        const QColor drawn = table().viewport()->grab().toImage().pixelColor(cell.right() + 1, cell.center().y());
        EXPECT_GE(contrast(drawn, groundOf(2, 3)), 3) << dark;
    }
}

// "Tune file" opens a dialog: only who picks it in the open list is asked for a file.
TEST_F(CompareViewTest, KeysAndTheWheelPickNoSourceInAClosedList) {
    auto& list = find<DropDown>("ComboLeft");
    list.setFocus();
    const int before = form->left.list.ListIndex;
    dialogs.answerFile((folder / "tune.txt").string());
    for (const auto each : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End}) {
        key(list, each);
        EXPECT_TRUE(list.view()->isVisible()) << each;
        list.hidePopup();
        EXPECT_EQ(form->left.list.ListIndex, before) << each;
    }
    key(list, Qt::Key_T, {}, "t");
    list.hidePopup();
    QWheelEvent wheel({5, 5}, list.mapToGlobal(QPointF(5, 5)), {}, {0, -240}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(form->left.list.ListIndex, before);
    EXPECT_EQ(form->left.source().kind, keep::Source::Kind::Ecu);
}

TEST_F(CompareViewTest, AnItemOfTheOpenListIsPickedByEnter) {
    auto& list = find<DropDown>("ComboLeft");
    list.setFocus();
    key(list, Qt::Key_Down);
    list.view()->setCurrentIndex(list.model()->index(1, 0));
    key(*list.view(), Qt::Key_Return);
    frame();
    EXPECT_EQ(form->left.source().kind, keep::Source::Kind::Desk);
}

TEST_F(CompareViewTest, TheTextsOfTheCellsAreLegibleInLightAndDark) {
    for (auto* const set : {&Palette::setLight, &Palette::setDark}) {
        set(*qApp);
        frame();
        const auto text = table().palette().color(QPalette::Text);
        for (const int column : {1, 2, 3}) {
            EXPECT_GE(contrast(groundOf(1, column), text), kLegible) << column;
        }
    }
}

TEST_F(CompareViewTest, TheHeadersAreSpeedAndLoad) {
    const auto* const model = table().model();
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "1500");
    EXPECT_EQ(model->headerData(9, Qt::Vertical, Qt::DisplayRole).toString(), "90-100");
}

TEST_F(CompareViewTest, ACellIsChosenByMouseAndByKey) {
    click(*table().viewport(), table().visualRect(table().model()->index(1, 1)).center());
    EXPECT_EQ(form->grdCells.SelectedItem, 17);
    table().setFocus();
    key(table(), Qt::Key_Right);
    EXPECT_EQ(form->grdCells.SelectedItem, 18);
    frame();
    EXPECT_TRUE(find<QLabel>("lblOne").text().contains(QStringLiteral("(-2)")));
    EXPECT_TRUE(
        table().model()->index(1, 2).data(Qt::AccessibleTextRole).toString().contains(QStringLiteral("2000 RPM")));
}

TEST_F(CompareViewTest, TheTabsHaveTheNumberOfDifferences) {
    auto& tabs = find<QTabBar>("tabWhat");
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("Fuel (2)"));
    tables.FuelMapOut[17] = 50;
    pump.wait(500);
    frame();
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("Fuel (1)"));
    EXPECT_EQ(textAt(1, 1), QString());
}

TEST_F(CompareViewTest, TheSettingsTakeThePlaceOfTheGrid) {
    EXPECT_FALSE(find<ListTable>("lstSettings").isVisible());
    form->tabWhat.choose(4);
    frame();
    EXPECT_FALSE(table().isVisible());
    EXPECT_TRUE(find<ListTable>("lstSettings").isVisible());
}

TEST_F(CompareViewTest, ItIsOpenedFromTheMainAndTheMapWindows) {
    static_cast<void>(form->unload());
    const auto isOpen = [this] { return windows.loaded().back()->name() == "frmCompare"; };
    EXPECT_FALSE(isOpen());
    click(findIn(*host.viewOf(window), "compare"));
    ASSERT_TRUE(isOpen());
    static_cast<void>(windows.loaded().back()->unload());
    program.mapWindows().open();
    const auto* const history = host.viewOf(*windows.loaded().back())->findChild<QToolButton*>("history");
    ASSERT_NE(history, nullptr);
    const auto actions = history->menu()->actions();
    ASSERT_EQ(actions.at(4)->text().toStdString(), "&Compare\tCtrl+D");
    actions.at(4)->trigger();
    EXPECT_TRUE(isOpen());
}

}  // namespace
}  // namespace korvane::views
