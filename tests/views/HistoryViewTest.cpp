// Undo by real keys, and the window that lists the steps.
#include <QAbstractItemModel>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "maps/MapForm.h"
#include "maps/history/FrmHistory.h"
#include "views/ProgramViews.h"
#include "views/maps/MapGridView.h"
#include "views/maps/StepTable.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

struct HistoryViewTest : testing::Test, ProgramViews {
    HistoryViewTest() {
        tables.Features = 0xFFFF;
        tables.SWType = 11;
        program.mapWindows().open();
        form_ = dynamic_cast<maps::FrmMaps*>(windows.loaded().back());
        lookAt(form());
        tables.FuelMapOut.fill(90);
        program.history().look();
        form().setFocus(&form().fuel(17));
        form().fuel(17).keyDown(controls::kKeyPlus, 0);
        view().activateWindow();
        frame();
    }

    maps::FrmMaps& form() { return *form_; }
    maps::FrmHistory& openList() {
        program.undo().showList();
        auto& list = dynamic_cast<maps::FrmHistory&>(*windows.loaded().back());
        lookAt(list);
        frame();
        return list;
    }
    [[nodiscard]] StepTable& table() const { return find<StepTable>("lstSteps"); }
    [[nodiscard]] std::string cell(int row, int column) const {
        return table().model()->index(row, column).data().toString().toStdString();
    }
    [[nodiscard]] int fuel(std::size_t at) const { return tables.FuelMapOut.at(at); }
    // An entry of the menu of the button in the status line.
    void choose(int entry) { find<QToolButton>("history").menu()->actions().at(entry)->trigger(); }
    void expectUndoOn(QWidget& widget) {
        ASSERT_EQ(fuel(17), 91);
        key(widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(fuel(17), 90);
        key(widget, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(fuel(17), 91);
        key(widget, Qt::Key_Z, Qt::ControlModifier);
        key(widget, Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(fuel(17), 91);
    }

private:
    maps::FrmMaps* form_ = nullptr;
};

TEST_F(HistoryViewTest, UndoWithTheFocusInACell) {
    auto& grid = find("txtFuel");
    grid.setFocus();
    expectUndoOn(grid);
}

TEST_F(HistoryViewTest, UndoWithTheFocusOnAButton) {
    auto& button = find("btnReadFuel");
    button.setFocus();
    expectUndoOn(button);
}

TEST_F(HistoryViewTest, UndoWithTheFocusOnABoxThatIsNoControl) {
    auto& box = find<QCheckBox>("heatTint");
    box.setFocus();
    expectUndoOn(box);
}

TEST_F(HistoryViewTest, UndoWithTheFocusInNothing) {
    form().setFocus(nullptr);
    if (auto* const focused = view().focusWidget()) {
        focused->clearFocus();
    }
    expectUndoOn(view());
}

TEST_F(HistoryViewTest, ABoxThatIsTypedIntoKeepsTheKeys) {
    auto& box = find("txtMisc(0)");
    box.setFocus();
    key(box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryViewTest, TheStatusLineSaysWhatWasUndone) {
    key(find("txtFuel"), Qt::Key_Z, Qt::ControlModifier);
    frame();
    EXPECT_EQ(find<Readout>("cellStatus").text().toStdString(), "Undone: Fuel: cell 18 from 90 to 91");
}

TEST_F(HistoryViewTest, TheButtonAndControlAndHOpenOneList) {
    choose(3);
    EXPECT_EQ(windows.loaded().back()->name(), "frmHistory");
    const auto count = windows.loaded().size();
    key(find("txtFuel"), Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(windows.loaded().size(), count);
}

TEST_F(HistoryViewTest, TheMenuOfTheButtonUndoesAndDoesAgain) {
    choose(0);
    EXPECT_EQ(fuel(17), 90);
    choose(1);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryViewTest, TheMenuRevertsTheCellThatHasTheFocus) {
    window.ecuMaps.fuel.read(17, std::vector<std::uint8_t>{88});
    find("txtFuel").setFocus();
    choose(2);
    EXPECT_EQ(fuel(17), 88);
    frame();
    EXPECT_EQ(find<Readout>("cellStatus").text().toStdString(), "Reverted 1 cell");
}

TEST_F(HistoryViewTest, TheTableHasARowForEachStepAndMarksThePlace) {
    openList();
    ASSERT_EQ(table().model()->rowCount(), 3);
    EXPECT_EQ(cell(0, 2), "Before the first step");
    EXPECT_EQ(cell(1, 2), "Fuel: changed by a script, 320 cells");
    EXPECT_EQ(cell(2, 0), "now");
    EXPECT_EQ(cell(2, 1), "12:00:00");
    EXPECT_EQ(cell(2, 2), "Fuel: cell 18 from 90 to 91");
    click(find<QPushButton>("btnUndo"));
    frame();
    EXPECT_EQ(cell(1, 0), "now");
    EXPECT_EQ(cell(2, 0), "undone");
    EXPECT_TRUE(find<QPushButton>("btnRedo").isEnabled());
}

TEST_F(HistoryViewTest, AClickOnARowGoesThereAndArrowsDoNot) {
    openList();
    auto& rows = *table().viewport();
    click(rows, table().visualRect(table().model()->index(1, 2)).center());
    EXPECT_EQ(fuel(17), 90);
    frame();
    key(table(), Qt::Key_Down);
    EXPECT_EQ(fuel(17), 90);
    key(table(), Qt::Key_Return);
    EXPECT_EQ(fuel(17), 91);
}

TEST_F(HistoryViewTest, ControlAndZInTheListIsUndoAsWell) {
    openList();
    key(table(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fuel(17), 90);
}

TEST_F(HistoryViewTest, NewStepsAndDroppedOnesReachTheTable) {
    openList();
    form().fuel(3).keyDown(controls::kKeyPlus, 0);
    frame();
    EXPECT_EQ(table().model()->rowCount(), 4);
    key(table(), Qt::Key_Z, Qt::ControlModifier);
    key(table(), Qt::Key_Z, Qt::ControlModifier);
    form().fuel(4).keyDown(controls::kKeyPlus, 0);
    frame();
    EXPECT_EQ(table().model()->rowCount(), 6);
    EXPECT_EQ(cell(4, 2), "Fuel: undone: 2 steps");
    EXPECT_EQ(cell(5, 2), "Fuel: cell 5 from 90 to 91");
    EXPECT_EQ(cell(5, 0), "now");
    for (int i = 0; i < 12'000; ++i) {
        const auto byte = static_cast<std::uint8_t>(1 + i % 200);
        tables.FuelMapOut.fill(byte);
        tables.IgnMapOut.fill(byte);
        tables.PwmMapOut.fill(byte);
        program.history().look();
    }
    frame();
    EXPECT_GT(program.history().dropped(), 0U);
    EXPECT_EQ(table().model()->rowCount(), static_cast<int>(program.history().count()) + 1);
    EXPECT_EQ(cell(0, 2), "Older steps are no longer kept");
}

// Whatever has the focus: a box, whose text stays as it is, a button, or nothing.
TEST_F(HistoryViewTest, TheKeysOfTheKeepWindowsWorkInTheSettingsWindow) {
    window.btnAsetukset.press();
    auto& settings = program.frmMisc();
    lookAt(settings);
    view().activateWindow();
    frame();
    auto& box = find<QLineEdit>("txtIdleAdv(0)");
    const auto expectKey = [&](QWidget& widget, Qt::Key pressed, std::string_view opens) {
        key(widget, pressed, Qt::ControlModifier);
        EXPECT_EQ(windows.loaded().back()->name(), opens);
        static_cast<void>(windows.loaded().back()->unload());
    };
    for (QWidget* const widget : std::initializer_list<QWidget*>{&box, &find("btnLoad"), &view()}) {
        widget->setFocus();
        const auto text = box.text();
        expectKey(*widget, Qt::Key_D, "frmCompare");
        expectKey(*widget, Qt::Key_R, "frmRestore");
        expectKey(*widget, Qt::Key_H, "frmHistory");
        EXPECT_EQ(box.text(), text);
    }
}

TEST_F(HistoryViewTest, AViewThatOutlivesItsWindowHasNoRows) {
    auto& list = openList();
    auto& rows = table();
    const Binder::Visit stay(view().binder());
    EXPECT_TRUE(list.unload());
    EXPECT_EQ(rows.model()->rowCount(), 0);
}

}  // namespace
}  // namespace korvane::views
