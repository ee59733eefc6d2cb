// A list in columns: its cells, its selection and its order.
#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/ListView.h"

namespace korvane::controls {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ListViewTest : public ModelBench {
protected:
    ListViewTest() {
        list_.addColumn("Part", "Name");
        list_.addColumn("Size", "NUMBER");
        for (const char* name : {"pear", "apple", "Quince", "fig"}) {
            list_.addRow({name, std::to_string(list_.rowCount())});
        }
        list_.ItemClick = [this](int row) { events_.push_back("item " + std::to_string(row)); };
        list_.ColumnClick = [this](int column) { events_.push_back("column " + std::to_string(column)); };
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (int row = 1; row <= list_.rowCount(); ++row) {
            names.push_back(list_.Cell(row, 1));
        }
        return names;
    }
    [[nodiscard]] Value get(std::string_view property) const { return list_.findProperty(property)->get(list_); }
    int set(std::string_view property, const Value& value) {
        return errorOf([&] { list_.findProperty(property)->set(list_, value); });
    }
    [[nodiscard]] std::optional<Value> cell(const std::vector<int>& indices) const {
        return list_.indexedProperty("Cell", indices);
    }

    ListView list_{window_, "lvwTest"};
    std::vector<std::string> events_;
};

TEST_F(ListViewTest, RowsAndColumnsCountFromOne) {
    EXPECT_EQ(list_.rowCount(), 4);
    EXPECT_EQ(list_.columnCount(), 2);
    EXPECT_EQ(list_.Cell(1, 1), "pear");
    EXPECT_EQ(list_.Cell(4, 2), "3");
    EXPECT_EQ(list_.column(2).heading, "Size");
    EXPECT_EQ(list_.column(2).tag, "NUMBER");
}

TEST_F(ListViewTest, WhatDoesNotExistIsASubscriptError) {
    for (const auto& [row, column] : {std::pair{0, 1}, {5, 1}, {1, 0}, {1, 3}, {-1, -1}}) {
        EXPECT_EQ(errorOf([&, r = row, c = column] { static_cast<void>(list_.Cell(r, c)); }),
                  platform::kErrorSubscript);
        EXPECT_EQ(errorOf([&, r = row, c = column] { list_.setCell(r, c, "x"); }), platform::kErrorSubscript);
    }
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_.column(3)); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_.rowTag(0)); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { list_.setRowTag(5, "x"); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { list_.clickRow(5); }), platform::kErrorSubscript);
    EXPECT_EQ(errorOf([&] { list_.clickColumn(3); }), platform::kErrorSubscript);
    EXPECT_THAT(events_, IsEmpty());
}

TEST_F(ListViewTest, ARowHasACellForEachColumn) {
    list_.addRow({"kiwi"});
    EXPECT_EQ(list_.Cell(5, 2), "");
    list_.addRow({"date", "7", "beyond"});
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_.Cell(6, 3)); }), platform::kErrorSubscript);
    list_.addColumn("Colour", "");
    EXPECT_EQ(list_.Cell(6, 3), "");
}

TEST_F(ListViewTest, ScriptsReadCellsAndTheNumberOfRows) {
    EXPECT_EQ(get("Rows"), Value(std::int64_t{4}));
    EXPECT_EQ(list_.findProperty("Rows")->set, nullptr);
    EXPECT_EQ(cell({2, 1}), Value(std::string("apple")));
    EXPECT_EQ(cell({2}), std::nullopt);
    EXPECT_EQ(cell({2, 1, 1}), std::nullopt);
    EXPECT_EQ(list_.indexedProperty("List", std::vector{2, 1}), std::nullopt);
    EXPECT_EQ(errorOf([&] { static_cast<void>(cell({5, 1})); }), platform::kErrorSubscript);
    EXPECT_EQ(list_.choices()->first, 1);
    EXPECT_EQ(list_.choices()->count, 4);
}

TEST_F(ListViewTest, AClickSelectsTheRowAndTellsEachTime) {
    list_.clickRow(3);
    list_.clickRow(3);
    EXPECT_EQ(list_.SelectedItem.get(), 3);
    EXPECT_THAT(events_, ElementsAre("item 3", "item 3"));
}

TEST_F(ListViewTest, PickingWhatIsPickedTellsNobody) {
    list_.choose(3);
    list_.choose(3);
    EXPECT_THAT(events_, ElementsAre("item 3"));
}

TEST_F(ListViewTest, AnAssignedSelectionRaisesNothing) {
    EXPECT_EQ(set("SelectedItem", std::int64_t{2}), 0);
    EXPECT_EQ(list_.SelectedItem.get(), 2);
    EXPECT_THAT(events_, IsEmpty());
}

TEST_F(ListViewTest, PropertiesTakeOnlyWhatTheListHas) {
    EXPECT_EQ(set("SelectedItem", std::int64_t{4}), 0);
    EXPECT_EQ(set("SelectedItem", std::int64_t{5}), platform::kErrorTypeMismatch);
    EXPECT_EQ(set("SelectedItem", std::int64_t{-1}), platform::kErrorTypeMismatch);
    EXPECT_EQ(list_.SelectedItem.get(), 4);
    EXPECT_EQ(set("SortKey", std::int64_t{1}), 0);
    EXPECT_EQ(set("SortKey", std::int64_t{2}), platform::kErrorTypeMismatch);
    EXPECT_EQ(set("SortOrder", std::int64_t{2}), platform::kErrorTypeMismatch);
    EXPECT_EQ(set("Sorted", std::string("yes")), platform::kErrorTypeMismatch);
}

TEST_F(ListViewTest, AClickOnAHeadMovesNothing) {
    list_.clickColumn(2);
    EXPECT_THAT(events_, ElementsAre("column 2"));
    EXPECT_THAT(names(), ElementsAre("pear", "apple", "Quince", "fig"));
}

TEST_F(ListViewTest, SortedPutsTheRowsInOrderOfTheKey) {
    list_.SortOrder = 1;
    EXPECT_THAT(names(), ElementsAre("pear", "apple", "Quince", "fig"));
    list_.Sorted = true;
    EXPECT_THAT(names(), ElementsAre("pear", "fig", "apple", "Quince"));
    list_.SortOrder = 0;
    EXPECT_THAT(names(), ElementsAre("Quince", "apple", "fig", "pear"));
    list_.SortKey = 1;
    EXPECT_THAT(names(), ElementsAre("pear", "apple", "Quince", "fig"));
}

TEST_F(ListViewTest, EqualTextsKeepTheirOrderBothWays) {
    list_.clearRows();
    for (int row = 0; row < 100; ++row) {
        list_.addRow({std::to_string(row), row % 2 == 0 ? "even" : "odd"});
    }
    const auto expect = [this](int row, int number) { EXPECT_EQ(list_.Cell(row, 1), std::to_string(number)); };
    list_.SortKey = 1;
    list_.Sorted = true;
    for (int place = 0; place < 50; ++place) {
        expect(place + 1, 2 * place);
        expect(place + 51, 2 * place + 1);
    }
    list_.SortOrder = 1;
    for (int place = 0; place < 50; ++place) {
        expect(place + 1, 2 * place + 1);
        expect(place + 51, 2 * place);
    }
}

TEST_F(ListViewTest, TheSelectionAndTheTagTravelWithTheirRow) {
    list_.clickRow(1);
    list_.setRowTag(1, "of the pear");
    list_.Sorted = true;
    EXPECT_EQ(list_.SelectedItem.get(), 4);
    EXPECT_EQ(list_.rowTag(4), "of the pear");
    EXPECT_EQ(list_.rowTag(1), "");
    EXPECT_THAT(events_, ElementsAre("item 1"));
}

TEST_F(ListViewTest, ANewRowFindsItsPlaceInASortedList) {
    list_.clickRow(4);
    list_.Sorted = true;
    list_.addRow({"banana", ""});
    EXPECT_THAT(names(), ElementsAre("Quince", "apple", "banana", "fig", "pear"));
    EXPECT_EQ(list_.SelectedItem.get(), 4);
}

TEST_F(ListViewTest, ACellAssignedLaterMovesNothing) {
    list_.Sorted = true;
    list_.setCell(1, 1, "zebra");
    EXPECT_THAT(names(), ElementsAre("zebra", "apple", "fig", "pear"));
}

TEST_F(ListViewTest, AKeyThatDoesNotExistLeavesTheRowsAlone) {
    list_.SortKey = 2;
    list_.Sorted = true;
    list_.SortKey = -1;
    list_.addRow({"banana", ""});
    EXPECT_THAT(names(), ElementsAre("pear", "apple", "Quince", "fig", "banana"));
}

TEST_F(ListViewTest, ClearingTakesRowsAndSelection) {
    list_.clickRow(2);
    list_.clearRows();
    EXPECT_EQ(list_.rowCount(), 0);
    EXPECT_EQ(list_.SelectedItem.get(), 0);
    EXPECT_EQ(list_.columnCount(), 2);
    list_.Sorted = true;
    EXPECT_EQ(list_.choices()->count, 0);
}

TEST_F(ListViewTest, ObserversHearOfRowsAndOfTheirOrder) {
    NotingObserver observer(list_);
    list_.addRow({"kiwi", "9"});
    EXPECT_THAT(observer.changes, ElementsAre(list_.rowsProperty()));
    list_.setCell(1, 1, "plum");
    EXPECT_EQ(observer.changes.size(), 2U);
    list_.setCell(1, 1, "plum");
    EXPECT_EQ(observer.changes.size(), 2U);
    observer.changes.clear();
    list_.Sorted = true;
    EXPECT_THAT(observer.changes, Contains(list_.rowsProperty()));
    observer.changes.clear();
    list_.clearRows();
    EXPECT_THAT(observer.changes, Contains(list_.rowsProperty()));
}

TEST_F(ListViewTest, AHandlerThatFailsLeavesTheSelection) {
    list_.ItemClick = [](int) { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); };
    EXPECT_NO_THROW(list_.choose(2));
    EXPECT_EQ(list_.SelectedItem.get(), 2);
    EXPECT_EQ(log_.lines.size(), 1U);
}

}  // namespace
}  // namespace korvane::controls
