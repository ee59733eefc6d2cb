#include <QHeaderView>

#include "controls/ListView.h"
#include "views/FormBench.h"
#include "views/widgets/ListTable.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListForm : public controls::Window {
public:
    explicit ListForm(platform::Machine& machine) : Window(machine, "frmList") {
        lvwParams.addColumn("Parameter name", "ParName");
        lvwParams.addColumn("address", "Address");
        lvwParams.addRow({"MISC2", "0001"});
        lvwParams.addRow({"BOOST", "0540"});
        lvwParams.addRow({"VOLT", "0361"});
        lvwParams.addRow({"BOUND", "0007"});
        lvwParams.ItemClick = [this](int row) { clicks.push_back(row); };
        lvwParams.ColumnClick = [this](int column) { columns.push_back(column); };
    }

    controls::ListView lvwParams{*this, "lvwParams"};
    controls::CommandButton btnNext{*this, "btnNext"};
    std::vector<int> clicks;
    std::vector<int> columns;
};

class ListFormView : public WindowView {
public:
    ListFormView(ListForm& form, FrameClock& clock) : WindowView(form, clock) {
        QWidget* const self = this;
        auto& rows = child<QVBoxLayout>(self);
        auto& list = child<ListTable>(self);
        auto& next = child<QPushButton>(self);
        list.setNarrow(1);
        rows.addWidget(&list);
        rows.addWidget(&next);
        binder().bind(form.lvwParams, list);
        binder().bind(form.btnNext, next);
        binder().setTabOrder({&form.btnNext, &form.lvwParams});
    }
};

struct ListViewTest : testing::Test, support::VirtualMachine {
    ListViewTest() {
        host.add<ListFormView, ListForm>("frmList");
        form.Width = 400 * 15;
        form.Height = 300 * 15;
        form.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(form); }
    [[nodiscard]] ListTable& table() const {
        return dynamic_cast<ListTable&>(*view().findChild<QWidget*>(QStringLiteral("lvwParams")));
    }
    void frame() {
        host.clock().tick();
        settle();
    }
    [[nodiscard]] std::vector<std::string> shown(int column) const {
        std::vector<std::string> texts;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            texts.push_back(table().model()->index(row, column).data().toString().toStdString());
        }
        return texts;
    }
    // The text of the highlighted row's first cell; empty for none.
    [[nodiscard]] std::string highlighted() const {
        const auto rows = table().selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.front().data().toString().toStdString() : "";
    }
    void clickRow(int row) {
        const QRect cell = table().visualRect(table().model()->index(row, 1));
        click(*table().viewport(), cell.center());
    }
    void clickHead(int column) {
        const auto* const header = table().header();
        click(*header->viewport(), {header->sectionViewportPosition(column) + 5, header->height() / 2});
    }
    void sortBy(int key, int order) {
        form.lvwParams.SortKey = key;
        form.lvwParams.SortOrder = order;
        form.lvwParams.Sorted = true;
        frame();
    }

    ListForm form{machine};
    ViewHost host{windows};
};

TEST_F(ListViewTest, ShowsHeadsAndRowsInTheListsOrder) {
    EXPECT_EQ(table().model()->headerData(0, Qt::Horizontal).toString(), "Parameter name");
    EXPECT_EQ(table().model()->headerData(1, Qt::Horizontal).toString(), "address");
    EXPECT_THAT(shown(0), ElementsAre("MISC2", "BOOST", "VOLT", "BOUND"));
    EXPECT_THAT(shown(1), ElementsAre("0001", "0540", "0361", "0007"));
}

TEST_F(ListViewTest, RowsOfTheProgramArriveWithTheNextFrame) {
    form.lvwParams.addRow({"NEW", "0900"});
    EXPECT_EQ(shown(0).size(), 4U);
    frame();
    EXPECT_EQ(shown(0).back(), "NEW");
    form.lvwParams.setCell(5, 2, "0901");
    frame();
    EXPECT_EQ(shown(1).back(), "0901");
    form.lvwParams.clearRows();
    frame();
    EXPECT_THAT(shown(0), IsEmpty());
}

TEST_F(ListViewTest, NarrowColumnIsNarrowAndAtTheRight) {
    EXPECT_LT(table().columnWidth(1), table().columnWidth(0) / 2);
    EXPECT_EQ(table().columnWidth(0) + table().columnWidth(1), table().viewport()->width());
    const int alignment = table().model()->index(0, 1).data(Qt::TextAlignmentRole).toInt();
    EXPECT_TRUE((alignment & Qt::AlignRight) != 0);
    EXPECT_TRUE((table().model()->index(0, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft) != 0);
}

TEST_F(ListViewTest, AClickSelectsItsRowOnceAndAgainOnTheNextClick) {
    clickRow(2);
    EXPECT_EQ(form.lvwParams.SelectedItem, 3);
    EXPECT_THAT(form.clicks, ElementsAre(3));
    EXPECT_EQ(highlighted(), "VOLT");
    clickRow(2);
    EXPECT_THAT(form.clicks, ElementsAre(3, 3));
}

TEST_F(ListViewTest, AClickBelowTheLastRowSelectsNothing) {
    click(*table().viewport(), {5, table().viewport()->height() - 5});
    EXPECT_THAT(form.clicks, IsEmpty());
    EXPECT_EQ(form.lvwParams.SelectedItem, 0);
}

TEST_F(ListViewTest, ArrowsAndReturnGoThroughTheRows) {
    clickRow(0);
    key(table(), Qt::Key_Down);
    key(table(), Qt::Key_Down);
    EXPECT_EQ(form.lvwParams.SelectedItem, 3);
    key(table(), Qt::Key_Return, {}, "\r");
    EXPECT_THAT(form.clicks, ElementsAre(1, 2, 3, 3));
}

TEST_F(ListViewTest, ComingInByTabSelectsNothing) {
    view().findChild<QWidget*>(QStringLiteral("btnNext"))->setFocus();
    key(*view().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view().focusWidget(), &table());
    EXPECT_EQ(form.activeControl(), &form.lvwParams);
    EXPECT_THAT(form.clicks, IsEmpty());
    EXPECT_EQ(form.lvwParams.SelectedItem, 0);
    key(table(), Qt::Key_Tab);
    EXPECT_NE(view().focusWidget(), &table());
}

TEST_F(ListViewTest, AHeadIsClickedByTheMouse) {
    clickHead(1);
    clickHead(0);
    EXPECT_THAT(form.columns, ElementsAre(2, 1));
    EXPECT_THAT(shown(0), ElementsAre("MISC2", "BOOST", "VOLT", "BOUND"));
}

TEST_F(ListViewTest, ASortedListShowsItsOrderAndKeepsTheSelection) {
    clickRow(2);
    sortBy(0, 0);
    EXPECT_THAT(shown(0), ElementsAre("BOOST", "BOUND", "MISC2", "VOLT"));
    EXPECT_EQ(highlighted(), "VOLT");
    EXPECT_TRUE(table().header()->isSortIndicatorShown());
    EXPECT_EQ(table().header()->sortIndicatorSection(), 0);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::AscendingOrder);
    sortBy(1, 1);
    EXPECT_THAT(shown(1), ElementsAre("0540", "0361", "0007", "0001"));
    EXPECT_EQ(highlighted(), "VOLT");
    EXPECT_EQ(table().header()->sortIndicatorSection(), 1);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_THAT(form.clicks, ElementsAre(3));
}

TEST_F(ListViewTest, TheSelectedRowStaysInViewWhenTheListIsSorted) {
    for (int i = 100; i < 200; ++i) {
        form.lvwParams.addRow({"P" + std::to_string(i), "0800"});
    }
    frame();
    clickRow(2);
    sortBy(0, 0);
    const auto selected = table().selectionModel()->selectedRows();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_TRUE(table().viewport()->rect().contains(table().visualRect(selected.front())));
}

TEST_F(ListViewTest, TypingPassesOverTheBlankAtTheHeadOfAName) {
    form.lvwParams.addRow({" IGNORDER", "0513"});
    frame();
    QApplication::setKeyboardInputInterval(60000);
    table().setFocus();
    type(table(), "ignord");
    frame();
    EXPECT_EQ(highlighted(), " IGNORDER");
}

TEST_F(ListViewTest, TypingFindsARow) {
    QApplication::setKeyboardInputInterval(60000);
    table().setFocus();
    type(table(), "bou");
    EXPECT_EQ(form.lvwParams.SelectedItem, 4);
    EXPECT_EQ(highlighted(), "BOUND");
    QApplication::setKeyboardInputInterval(0);
    type(table(), "v");
    EXPECT_EQ(highlighted(), "VOLT");
}

TEST_F(ListViewTest, DigitsFindAnAddress) {
    QApplication::setKeyboardInputInterval(60000);
    table().setFocus();
    type(table(), "05");
    EXPECT_EQ(highlighted(), "BOOST");
}

TEST_F(ListViewTest, TheSameLetterOnceMoreGoesToTheNextRow) {
    QApplication::setKeyboardInputInterval(0);
    table().setFocus();
    type(table(), "b");
    EXPECT_EQ(highlighted(), "BOOST");
    type(table(), "b");
    EXPECT_EQ(highlighted(), "BOUND");
    QApplication::setKeyboardInputInterval(60000);
    type(table(), "bbb");
    EXPECT_EQ(highlighted(), "BOOST");
}

TEST_F(ListViewTest, WhatTheProgramSelectsIsHighlightedAndRaisesNothing) {
    form.lvwParams.SelectedItem = 2;
    frame();
    EXPECT_EQ(highlighted(), "BOOST");
    form.lvwParams.SelectedItem = 0;
    frame();
    EXPECT_EQ(highlighted(), "");
    EXPECT_THAT(form.clicks, IsEmpty());
}

TEST_F(ListViewTest, ADisabledListDoesNothing) {
    form.lvwParams.Enabled = false;
    clickRow(1);
    clickHead(0);
    EXPECT_THAT(form.clicks, IsEmpty());
    EXPECT_THAT(form.columns, IsEmpty());
    EXPECT_EQ(highlighted(), "");
}

}  // namespace
}  // namespace korvane::views
