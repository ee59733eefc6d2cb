#include <gmock/gmock.h>
#include <limits>

#include "ModelBench.h"
#include "controls/Chart.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ChartTest : public ModelBench {
protected:
    ChartTest() { size(2, 3); }

    void size(int rows, int columns) {
        chart_.RowCount = rows;
        chart_.ColumnCount = columns;
    }
    void select(int row, int column) {
        chart_.Row = row;
        chart_.Column = column;
    }
    void write(int row, int column, std::string data) {
        select(row, column);
        chart_.setData(std::move(data));
    }
    int errorOfData() {
        return errorOf([this] { static_cast<void>(chart_.Data()); });
    }
    [[nodiscard]] const PropertyInfo& property(std::string_view name) const { return *chart_.findProperty(name); }

    Chart chart_{window_, "MSChart1"};
};

TEST_F(ChartTest, ANewChartHasNoCells) {
    const Chart chart(window_, "MSChart2");
    EXPECT_EQ(chart.RowCount.get(), 0);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart.Data()); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart.RowLabel()); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart.ColumnLabel()); }), 9);
}

TEST_F(ChartTest, RowAndColumnSelectTheCell) {
    write(1, 3, "right");
    write(2, 1, "left");
    select(1, 3);
    EXPECT_EQ(chart_.Data(), "right");
    select(2, 1);
    EXPECT_EQ(chart_.Data(), "left");
    select(1, 1);
    EXPECT_EQ(chart_.Data(), "");
}

TEST_F(ChartTest, ALabelBelongsToItsWholeRowOrColumn) {
    select(2, 3);
    chart_.setRowLabel("second");
    chart_.setColumnLabel("third");
    select(2, 1);
    EXPECT_EQ(chart_.RowLabel(), "second");
    EXPECT_EQ(chart_.ColumnLabel(), "");
    select(1, 3);
    EXPECT_EQ(chart_.RowLabel(), "");
    EXPECT_EQ(chart_.ColumnLabel(), "third");
}

TEST_F(ChartTest, WhatLiesOutsideIsASubscriptFailure) {
    for (const auto& [row, column] : {std::pair{0, 1}, {3, 1}, {1, 0}, {1, 4}, {-1, 1}, {1, -1}}) {
        select(row, column);
        EXPECT_EQ(errorOfData(), 9) << row << ' ' << column;
        EXPECT_EQ(errorOf([&] { chart_.setData("1"); }), 9);
    }
    select(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    EXPECT_EQ(errorOfData(), 9);
    EXPECT_EQ(errorOf([&] { chart_.setRowLabel("1"); }), 9);
    EXPECT_EQ(errorOf([&] { chart_.setColumnLabel("1"); }), 9);
}

TEST_F(ChartTest, ByPlaceCellsCountFromZero) {
    write(2, 3, "corner");
    chart_.setRowLabel("second");
    chart_.setColumnLabel("third");
    EXPECT_EQ(chart_.dataAt(1, 2), "corner");
    EXPECT_EQ(chart_.rowLabelAt(1), "second");
    EXPECT_EQ(chart_.columnLabelAt(2), "third");
    EXPECT_EQ(chart_.dataAt(0, 0), "");
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.dataAt(2, 0)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.dataAt(0, -1)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.rowLabelAt(2)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.columnLabelAt(3)); }), 9);
}

TEST_F(ChartTest, AnotherSizeStartsWithEmptyCells) {
    write(1, 1, "old");
    size(2, 4);
    EXPECT_EQ(chart_.dataAt(0, 0), "");
    write(1, 1, "old");
    size(3, 4);
    EXPECT_EQ(chart_.dataAt(0, 0), "");
}

TEST_F(ChartTest, TheSameSizeAgainKeepsTheCells) {
    write(1, 1, "kept");
    size(2, 3);
    EXPECT_EQ(chart_.dataAt(0, 0), "kept");
}

TEST_F(ChartTest, LabelsStayWhereTheirRowOrColumnStays) {
    select(2, 3);
    chart_.setRowLabel("second");
    chart_.setColumnLabel("third");
    size(1, 3);
    size(2, 3);
    EXPECT_EQ(chart_.rowLabelAt(1), "");
    EXPECT_EQ(chart_.columnLabelAt(2), "third");
}

TEST_F(ChartTest, ASelectionThatAShrunkChartHasNotGotFails) {
    write(2, 3, "corner");
    size(1, 3);
    EXPECT_EQ(errorOfData(), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.RowLabel()); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(chart_.ColumnLabel()); }), 0);
}

TEST_F(ChartTest, AbsurdSizesTakeNoRoom) {
    size(std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
    write(2000000000, 2000000000, "far");
    EXPECT_EQ(chart_.Data(), "far");
    size(-1, std::numeric_limits<int>::min());
    select(1, 1);
    EXPECT_EQ(errorOfData(), 9);
}

TEST_F(ChartTest, RefreshTellsThatTheDataAreThere) {
    NotingObserver observer(chart_);
    chart_.setData("5");
    EXPECT_THAT(observer.changes, IsEmpty());
    chart_.Refresh();
    EXPECT_THAT(observer.changes, ElementsAre(chart_.dataProperty()));
}

TEST_F(ChartTest, ScriptsReachTheSelectedCellByName) {
    property("Row").set(chart_, std::int64_t{2});
    property("Column").set(chart_, std::int64_t{3});
    property("Data").set(chart_, std::string("120"));
    property("RowLabel").set(chart_, std::string("10 - 20 %"));
    property("ColumnLabel").set(chart_, std::string("2000 RPM"));
    EXPECT_EQ(property("Data").get(chart_), Value("120"));
    EXPECT_EQ(property("RowLabel").get(chart_), Value("10 - 20 %"));
    EXPECT_EQ(property("ColumnLabel").get(chart_), Value("2000 RPM"));
    EXPECT_EQ(property("RowCount").get(chart_), Value(std::int64_t{2}));
    EXPECT_EQ(property("ColumnCount").get(chart_), Value(std::int64_t{3}));
    EXPECT_EQ(chart_.dataAt(1, 2), "120");
    property("Column").set(chart_, std::int64_t{4});
    EXPECT_EQ(errorOf([&] { static_cast<void>(property("Data").get(chart_)); }), 9);
}

}  // namespace
}  // namespace korvane::controls
