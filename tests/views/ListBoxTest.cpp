#include <QScrollBar>

#include "controls/ListBox.h"
#include "views/FormBench.h"
#include "views/widgets/TextList.h"

namespace korvane::views {
namespace {

class LogForm : public controls::Window {
public:
    explicit LogForm(platform::Machine& machine) : Window(machine, "frmLog") {
        List1.Click = [this] { ++clicks; };
    }

    controls::ListBox List1{*this, "List1"};
    int clicks = 0;
};

class LogFormView : public WindowView {
public:
    LogFormView(LogForm& form, FrameClock& clock) : WindowView(form, clock) {
        QWidget* const self = this;
        auto& list = child<TextList>(self);
        child<QVBoxLayout>(self).addWidget(&list);
        binder().bind(form.List1, list);
    }
};

struct ListBoxTest : testing::Test, support::VirtualMachine {
    ListBoxTest() {
        host.add<LogFormView, LogForm>("frmLog");
        form.Width = 300 * 15;
        form.Height = 200 * 15;
        fill(3);
        form.show();
        host.viewOf(form)->activateWindow();
        settle();
    }

    void fill(int rows) {
        for (int row = 0; row < rows; ++row) {
            form.List1.AddItem("row " + std::to_string(row));
        }
    }
    void frame() {
        host.clock().tick();
        settle();
    }
    [[nodiscard]] TextList& list() const {
        return dynamic_cast<TextList&>(*host.viewOf(form)->findChild<QWidget*>(QStringLiteral("List1")));
    }
    [[nodiscard]] int selected() const {
        const auto indexes = list().selectionModel()->selectedIndexes();
        return indexes.isEmpty() ? -1 : indexes.front().row();
    }
    // Every row of the widget is the control's.
    void expectSameRows() const {
        ASSERT_EQ(list().rowCount(), form.List1.ListCount());
        for (int row = 0; row < list().rowCount(); ++row) {
            ASSERT_EQ(list().text(row).toStdString(), form.List1.List(row)) << row;
        }
    }
    void clickRow(int row) { click(*list().viewport(), list().visualRect(list().model()->index(row, 0)).center()); }

    LogForm form{machine};
    ViewHost host{windows};
};

TEST_F(ListBoxTest, ShowsItsRows) {
    expectSameRows();
    EXPECT_EQ(selected(), -1);
    fill(2);
    frame();
    expectSameRows();
}

TEST_F(ListBoxTest, RowsThatGoAndComeBetweenTwoFramesAreAllBroughtOver) {
    form.List1.Clear();
    form.List1.AddItem("first of the new ones");
    frame();
    expectSameRows();
    fill(controls::ListBox::kMostRows + 2);
    frame();
    expectSameRows();
    form.List1.AddItem("one more");
    frame();
    expectSameRows();
    form.List1.Clear();
    fill(2);
    form.List1.Clear();
    frame();
    expectSameRows();
}

TEST_F(ListBoxTest, TheProgramsChoiceIsSelected) {
    form.List1.ListIndex = 1;
    frame();
    EXPECT_EQ(selected(), 1);
    form.List1.ListIndex = -1;
    frame();
    EXPECT_EQ(selected(), -1);
}

TEST_F(ListBoxTest, AClickAndAnArrowChooseARow) {
    clickRow(1);
    EXPECT_EQ(form.List1.ListIndex.get(), 1);
    EXPECT_EQ(form.clicks, 1);
    key(list(), Qt::Key_Down);
    EXPECT_EQ(form.List1.ListIndex.get(), 2);
    EXPECT_EQ(form.clicks, 2);
}

TEST_F(ListBoxTest, TheEndStaysInViewUnlessTheUserHasScrolledAway) {
    auto& bar = *list().verticalScrollBar();
    fill(50);
    frame();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(3);
    fill(5);
    frame();
    EXPECT_EQ(bar.value(), 3);
}

}  // namespace
}  // namespace korvane::views
