#include <QAccessible>
#include <QHelpEvent>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "controls/Controls.h"
#include "maps/grid/MapGrid.h"
#include "support/VirtualMachine.h"
#include "views/Accessibility.h"
#include "views/Events.h"
#include "views/Pixels.h"
#include "views/frame/ViewHost.h"
#include "views/maps/MapGridBinding.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/Child.h"
#include "views/widgets/Palette.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr maps::MapGeometry kShape{10, 16};

class GridForm : public controls::Window {
public:
    explicit GridForm(platform::Machine& machine) : Window(machine, "frmGrid") {
        for (int cell = 0; cell < 64; ++cell) {
            second(cell).Enabled = false;
        }
    }

    controls::CommandButton btnBefore{*this, "btnBefore"};
    controls::Frame frame{*this, "frame"};
    maps::MapGrid first{*this, {"txtFuel", "lblRpmF", "lblMapF"}, kShape, frame};
    maps::MapGrid second{*this, {"txtPWM", "lblRpmP", "lblMapP"}, kShape, frame};
    controls::CommandButton btnAfter{*this, "btnAfter"};
};

class GridFormView : public WindowView {
public:
    GridFormView(GridForm& form, FrameClock& clock) : WindowView(form, clock) {
        // Before the widgets are made.
        installAccessibility();
        QWidget* const self = this;
        auto& rows = child<QVBoxLayout>(self);
        const auto put = [&rows](auto& widget) -> auto& {
            rows.addWidget(&widget);
            return widget;
        };
        binder().bind(form.btnBefore, put(child<QPushButton>(self)));
        auto& first = put(child<MapGridView>(self, kShape));
        first.setAccessibleName(QStringLiteral("Fuel"));
        bindGrid(binder(), form.first, first);
        bindGrid(binder(), form.second, put(child<MapGridView>(self, kShape)));
        binder().bind(form.btnAfter, put(child<QPushButton>(self)));
    }
};

// The parts of a widget that are painted.
class PaintedRegion : public QObject {
public:
    explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }
    [[nodiscard]] QRegion take() { return std::exchange(region_, QRegion()); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            region_ += static_cast<const QPaintEvent*>(event)->region();
        }
        return false;
    }

private:
    QRegion region_;
};

struct MapGridViewTest : testing::Test, support::VirtualMachine {
    MapGridViewTest() {
        host.add<GridFormView, GridForm>("frmGrid");
        form.Width = 1000 * 15;
        form.Height = 800 * 15;
        form.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(form); }
    [[nodiscard]] MapGridView& grid(const char* name = "txtFuel") const {
        return *dynamic_cast<MapGridView*>(view().findChild<QWidget*>(QString::fromLatin1(name)));
    }
    [[nodiscard]] QPushButton& button(const char* name) const {
        return *view().findChild<QPushButton*>(QString::fromLatin1(name));
    }
    void frame() {
        host.clock().tick();
        settle();
    }

    // A pixel of the cell's ground, off its text and its mark.
    [[nodiscard]] QColor ground(int cell) const {
        return grid().grab().toImage().pixelColor(grid().cellRect(cell).topLeft() + QPoint(4, 4));
    }
    // Whether a pixel of this colour is in the cell.
    [[nodiscard]] bool hasColor(int cell, const QColor& color) const {
        return countOf(grid().grab(grid().cellRect(cell)).toImage(), color) > 0;
    }
    // Key codes and Shift arguments that a cell is told.
    void listen(int cell) {
        form.first(cell).KeyDown = [this](int code, int shift) { down.emplace_back(code, shift); };
        form.first(cell).KeyUp = [this](int code, int shift) { up.emplace_back(code, shift); };
    }
    [[nodiscard]] static QPoint middle(const MapGridView& grid, int cell) { return grid.cellRect(cell).center(); }

    GridForm form{machine};
    ViewHost host{windows};
    std::vector<std::pair<int, int>> down;
    std::vector<std::pair<int, int>> up;
};

TEST_F(MapGridViewTest, TheWidgetBearsTheNameOfItsCells) {
    EXPECT_EQ(view().findChildren<QWidget*>("txtFuel").size(), 1);
    EXPECT_EQ(view().findChildren<QWidget*>("txtFuel(0)").size(), 0);
}

TEST_F(MapGridViewTest, CellsLieInRowsAndColumnsAndDoNotOverlap) {
    for (int cell = 0; cell < kShape.cells(); ++cell) {
        EXPECT_EQ(grid().cellAt(middle(grid(), cell)), cell);
        EXPECT_GE(grid().cellRect(cell).width(), 20);
    }
    EXPECT_EQ(grid().cellAt({2, 2}), std::nullopt);
    EXPECT_EQ(grid().cellAt({grid().width() + 5, 60}), std::nullopt);
    EXPECT_GT(grid().cellRect(1).left(), grid().cellRect(0).right());
    EXPECT_GT(grid().cellRect(16).top(), grid().cellRect(0).bottom());
}

TEST_F(MapGridViewTest, ACellShowsItsColoursAndItsText) {
    form.first(5).BackColor = controls::kGreen;
    form.first(5).ForeColor = controls::kBlue;
    form.first(5).Text = "12.5";
    EXPECT_EQ(grid().cell(5).text, "");
    frame();
    EXPECT_EQ(grid().cell(5).text, "12.5");
    EXPECT_EQ(ground(5), QColor(0, 255, 0));
    EXPECT_TRUE(hasColor(5, QColor(0, 0, 255)));
    EXPECT_EQ(ground(6), QColor(255, 255, 255));
}

TEST_F(MapGridViewTest, ACellThatWasNeverColouredIsBlackOnWhiteInTheDarkToo) {
    form.first(5).Text = "1";
    frame();
    const QPalette before = QApplication::palette();
    QApplication::setPalette(Palette::dark());
    settle();
    EXPECT_EQ(ground(5), QColor(255, 255, 255));
    EXPECT_TRUE(hasColor(5, QColor(0, 0, 0)));
    QApplication::setPalette(before);
}

TEST_F(MapGridViewTest, ADisabledCellIsDimmed) {
    form.first(5).BackColor = controls::kWhite;
    form.first(5).Text = "8";
    frame();
    EXPECT_TRUE(hasColor(5, QColor(0, 0, 0)));
    form.first(5).Enabled = false;
    frame();
    EXPECT_LT(ground(5).lightness(), 250);
    EXPECT_FALSE(hasColor(5, QColor(0, 0, 0)));
}

TEST_F(MapGridViewTest, OnlyCellsThatHaveChangedArePainted) {
    PaintedRegion painted(grid());
    form.first(20).Text = "1.5";
    form.first(20).ToolTipText = "3";
    form.first(99).ToolTipText = "nothing to see";
    frame();
    EXPECT_EQ(painted.take().boundingRect(), grid().cellRect(20));
    form.first(20).Text = "1.5";
    frame();
    EXPECT_TRUE(painted.take().isEmpty());
}

TEST_F(MapGridViewTest, AWholeMapIsPaintedInOneGo) {
    PaintCounter paintings(grid());
    for (int cell = 0; cell < kShape.cells(); ++cell) {
        form.first(cell).Text = "2";
        form.first(cell).ForeColor = controls::kBlue;
    }
    frame();
    EXPECT_EQ(paintings.count(), 1);
}

TEST_F(MapGridViewTest, LabelsAreThoseOfTheModel) {
    EXPECT_EQ(grid().columnLabel(3).text, "2500");
    EXPECT_EQ(grid().rowLabel(0).text, "kuorma");
    form.first.rowLabels(9).Caption = "90-100 %";
    frame();
    EXPECT_EQ(grid().rowLabel(9).text, "90-100 %");
}

TEST_F(MapGridViewTest, SmallFontsMakeSmallTextsAndBoldIsBold) {
    const auto ink = [this] {
        const QImage image = grid().grab(grid().cellRect(5)).toImage();
        int dark = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                dark += 255 - image.pixelColor(x, y).lightness();
            }
        }
        return dark;
    };
    form.first(5).Text = "8.88";
    frame();
    const int usual = ink();
    form.first(5).FontBold = true;
    frame();
    EXPECT_GT(ink(), usual * 11 / 10);
    form.first(5).FontBold = false;
    for (auto& cell : form.first.cells) {
        cell.FontSize = 6;
    }
    frame();
    EXPECT_LT(ink(), usual * 9 / 10);
}

TEST_F(MapGridViewTest, KeysGoToTheCellWithTheFocus) {
    listen(17);
    form.setFocus(&form.first(17));
    key(grid(), Qt::Key_A, {}, "a");
    key(grid(), Qt::Key_Right);
    key(grid(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_THAT(down, ElementsAre(Pair(65, 0), Pair(39, 0), Pair(38, 2)));
    EXPECT_THAT(up, ElementsAre(Pair(65, 0), Pair(39, 0), Pair(38, 2)));
}

TEST_F(MapGridViewTest, PlusAndMinusOfBothKeyBlocksAreTheSame) {
    listen(17);
    form.setFocus(&form.first(17));
    key(grid(), Qt::Key_Plus, {}, "+");
    key(grid(), Qt::Key_Plus, Qt::KeypadModifier, "+");
    key(grid(), Qt::Key_Minus, {}, "-");
    key(grid(), Qt::Key_Minus, Qt::KeypadModifier, "-");
    EXPECT_THAT(down, ElementsAre(Pair(187, 0), Pair(187, 0), Pair(189, 0), Pair(189, 0)));
}

TEST_F(MapGridViewTest, PlusThatNeedsShiftIsNoSelection) {
    listen(17);
    form.setFocus(&form.first(17));
    keyDown(grid(), Qt::Key_Shift);
    key(grid(), Qt::Key_Plus, Qt::ShiftModifier, "+");
    keyUp(grid(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_THAT(down, ElementsAre(Pair(187, 0)));
}

TEST_F(MapGridViewTest, ShiftIsToldBeforeTheArrowThatItIsHeldFor) {
    listen(17);
    form.setFocus(&form.first(17));
    keyDown(grid(), Qt::Key_Shift);
    EXPECT_THAT(down, IsEmpty());
    key(grid(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_THAT(down, ElementsAre(Pair(16, 1), Pair(39, 1)));
}

TEST_F(MapGridViewTest, ShiftAloneIsToldWhenItIsReleased) {
    listen(17);
    form.setFocus(&form.first(17));
    keyDown(grid(), Qt::Key_Shift);
    keyUp(grid(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_THAT(down, ElementsAre(Pair(16, 1)));
    EXPECT_THAT(up, ElementsAre(Pair(16, 0)));
}

TEST_F(MapGridViewTest, ShiftIsToldBeforeTheClickThatItIsHeldFor) {
    listen(17);
    form.setFocus(&form.first(17));
    std::vector<std::pair<int, int>> clicks;
    form.first(40).MouseUp = [&](int button, int shift, double, double) { clicks.emplace_back(button, shift); };
    keyDown(grid(), Qt::Key_Shift);
    click(grid(), middle(grid(), 40), Qt::ShiftModifier);
    EXPECT_THAT(down, ElementsAre(Pair(16, 1)));
    EXPECT_THAT(clicks, ElementsAre(Pair(1, 1)));
    EXPECT_EQ(form.activeControl(), &form.first(40));
}

TEST_F(MapGridViewTest, AHandlerThatMovesTheFocusHasTheNextKeyGoThere) {
    listen(18);
    form.first(17).KeyDown = [this](int, int) { form.setFocus(&form.first(18)); };
    form.setFocus(&form.first(17));
    key(grid(), Qt::Key_Right);
    key(grid(), Qt::Key_Plus, {}, "+");
    EXPECT_THAT(up, ElementsAre(Pair(39, 0), Pair(187, 0)));
    EXPECT_THAT(down, ElementsAre(Pair(187, 0)));
    EXPECT_EQ(grid().focusCell(), 18);
}

TEST_F(MapGridViewTest, AClickTakesTheFocusToTheCellBelowIt) {
    std::vector<int> heard;
    form.first(33).GotFocus = [&] { heard.push_back(33); };
    form.first(0).GotFocus = [&] { heard.push_back(0); };
    button("btnAfter").setFocus();
    click(grid(), middle(grid(), 33));
    EXPECT_EQ(form.activeControl(), &form.first(33));
    EXPECT_EQ(view().focusWidget(), &grid());
    EXPECT_EQ(grid().focusCell(), 33);
    EXPECT_THAT(heard, ElementsAre(33));
}

TEST_F(MapGridViewTest, AButtonReleasedElsewhereIsToldToTheCellThatWasPressed) {
    std::vector<double> heard;
    form.first(33).MouseUp = [&](int button, int shift, double x, double y) {
        heard = {static_cast<double>(button), static_cast<double>(shift), x, y};
    };
    const QPoint corner = grid().cellRect(33).topLeft();
    const QPoint out = corner + QPoint(70, 4);
    send(grid(),
         QMouseEvent(QEvent::MouseButtonPress, corner + QPoint(3, 4), QPointF(), Qt::LeftButton, Qt::LeftButton, {}));
    send(grid(),
         QMouseEvent(QEvent::MouseButtonRelease, out, QPointF(), Qt::LeftButton, Qt::NoButton, Qt::ShiftModifier));
    EXPECT_THAT(heard, ElementsAre(1, 1, 70 * 15, 4 * 15));
}

TEST_F(MapGridViewTest, AClickOnADisabledCellOrALabelLeavesTheFocusAlone) {
    button("btnAfter").setFocus();
    bool heard = false;
    form.second(3).MouseUp = [&](int, int, double, double) { heard = true; };
    click(grid("txtPWM"), middle(grid("txtPWM"), 3));
    click(grid("txtPWM"), {3, 3});
    EXPECT_EQ(form.activeControl(), &form.btnAfter);
    EXPECT_FALSE(heard);
}

TEST_F(MapGridViewTest, TabPassesTheGridAsOneAndComesBackToTheCellThatWasLeft) {
    button("btnBefore").setFocus();
    key(*view().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(form.activeControl(), &form.first(0));
    form.setFocus(&form.first(37));
    key(*view().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(form.activeControl(), &form.second(64));
    key(*view().focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(form.activeControl(), &form.first(37));
    key(*view().focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(form.activeControl(), &form.btnBefore);
}

TEST_F(MapGridViewTest, TabIsNoKeyOfTheCells) {
    listen(17);
    form.setFocus(&form.first(17));
    keyDown(grid(), Qt::Key_Shift);
    keyDown(grid(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_THAT(down, IsEmpty());
    form.setFocus(&form.first(17));
    keyUp(grid(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_THAT(up, IsEmpty());
}

TEST_F(MapGridViewTest, TheFocusOfTheProgramMovesTheMark) {
    form.first(17).BackColor = controls::kWhite;
    form.setFocus(&form.first(17));
    EXPECT_EQ(view().focusWidget(), &grid());
    frame();
    const auto corner = [this](int cell) {
        return grid().grab().toImage().pixelColor(grid().cellRect(cell).topLeft());
    };
    EXPECT_EQ(corner(17), QColor(0, 0, 0));
    form.setFocus(&form.first(18));
    frame();
    EXPECT_EQ(corner(17), QColor(255, 255, 255));
    EXPECT_EQ(corner(18), QColor(0, 0, 0));
    form.setFocus(&form.btnAfter);
    frame();
    EXPECT_EQ(corner(18), QColor(255, 255, 255));
    EXPECT_EQ(grid().focusCell(), std::nullopt);
}

TEST_F(MapGridViewTest, WhenTheProgramTakesTheFocusAwayNoCellHearsAKey) {
    listen(17);
    form.setFocus(&form.first(17));
    form.setFocus(&form.btnAfter);
    key(*view().focusWidget(), Qt::Key_Plus, {}, "+");
    EXPECT_THAT(down, IsEmpty());
}

TEST_F(MapGridViewTest, TheToolTipIsThatOfTheCellUnderTheMouse) {
    form.first(40).ToolTipText = " 128";
    form.first(41).ToolTipText = " 129";
    const auto rest = [this](QPoint at) {
        send(grid(), QHelpEvent(QEvent::ToolTip, at, grid().mapToGlobal(at)));
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(rest(middle(grid(), 40)), " 128");
    EXPECT_EQ(rest(middle(grid(), 41)), " 129");
}

TEST_F(MapGridViewTest, AScreenReaderHearsCellValueAndState) {
    auto& cell = form.first(17);  // second row, second column: 1500 rpm, 10 to 20 percent
    cell.Text = "4.2";
    cell.ForeColor = controls::kBlue;
    cell.BackColor = controls::kGreen;
    form.setFocus(&cell);
    frame();
    auto* const spoken = QAccessible::queryAccessibleInterface(&grid());
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::Table);
    EXPECT_EQ(spoken->childCount(), 160);
    auto* const table = spoken->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 10);
    EXPECT_EQ(table->columnCount(), 16);
    EXPECT_EQ(table->columnDescription(1), "1500");
    auto* const inside = table->cellAt(1, 1);
    ASSERT_NE(inside, nullptr);
    EXPECT_EQ(inside, spoken->child(17));
    EXPECT_EQ(inside->text(QAccessible::Name), "Fuel 1500 rpm 10-20");
    EXPECT_EQ(inside->text(QAccessible::Value), "4.2");
    EXPECT_EQ(inside->text(QAccessible::Description), "selected, changed");
    EXPECT_TRUE(inside->state().focused);
    EXPECT_TRUE(inside->state().selected);
    EXPECT_FALSE(inside->state().disabled);
    EXPECT_EQ(inside->tableCellInterface()->rowIndex(), 1);
    EXPECT_EQ(spoken->focusChild(), inside);
    EXPECT_EQ(table->selectedCellCount(), 1);
    EXPECT_EQ(table->cellAt(10, 0), nullptr);
    EXPECT_EQ(spoken->child(160), nullptr);
    const QPoint at = inside->rect().center();
    EXPECT_EQ(spoken->childAt(at.x(), at.y()), inside);
    auto* const other = QAccessible::queryAccessibleInterface(&grid("txtPWM"));
    EXPECT_TRUE(other->child(3)->state().disabled);
}

TEST_F(MapGridViewTest, AWindowThatClosesInAKeyHandlerHarmsNothing) {
    form.first(17).KeyDown = [this](int, int) { static_cast<void>(form.unload()); };
    form.setFocus(&form.first(17));
    key(grid(), Qt::Key_A, {}, "a");
    EXPECT_EQ(host.viewOf(form), nullptr);
    settle();
}

TEST(MapGridViewLife, AWindowThatIsDestroyedLeavesItsViewAlone) {
    support::VirtualMachine machine;
    ViewHost host{machine.windows};
    host.add<GridFormView, GridForm>("frmGrid");
    auto form = std::make_unique<GridForm>(machine.machine);
    form->show();
    form->setFocus(&form->first(3));
    form.reset();
    QApplication::processEvents();
    EXPECT_THAT(machine.windows.loaded(), IsEmpty());
}

}  // namespace
}  // namespace korvane::views
