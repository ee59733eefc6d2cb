// A list in columns, sorted by a click on a column's head.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"

namespace korvane::controls {

// Rows and columns count from 1. A click on a row selects it and raises ItemClick, also on the row that is selected; a
// click on a head raises ColumnClick and changes nothing by itself. Assigning a property raises neither.
class ListView : public Control {
public:
    using Control::Control;

    struct Column {
        std::string heading;
        std::string tag;
    };

    // Assigning one of these three sorts the rows while Sorted is on: by the bytes of the column's texts, equal ones in
    // the order that they had. A new row is sorted in too; assigning a cell later moves no row.
    Property<int> SortKey{*this};    // the column to sort by, from 0; one that does not exist leaves the rows alone
    Property<int> SortOrder{*this};  // 0 rising, 1 falling
    Property<bool> Sorted{*this};

    Property<int> SelectedItem{*this};  // 0 for none; follows its row when the list is sorted

    Event<int> ItemClick;    // row
    Event<int> ColumnClick;  // column

    void addColumn(std::string heading, std::string tag);
    // Cells that are missing are empty, those beyond the last column are dropped.
    void addRow(std::vector<std::string> cells);
    void clearRows();
    [[nodiscard]] int rowCount() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int columnCount() const override { return static_cast<int>(columns_.size()); }
    // RuntimeError 9 for what does not exist.
    [[nodiscard]] const Column& column(int number) const;
    [[nodiscard]] const std::string& Cell(int row, int column) const;
    void setCell(int row, int column, std::string text);
    // Kept with a row; moves with it.
    [[nodiscard]] const std::string& rowTag(int row) const;
    void setRowTag(int row, std::string text);

    // The user's click on a row; RuntimeError 9 for one that does not exist.
    void clickRow(int row);
    // Picking the row that is selected raises nothing.
    void choose(int row) override;
    void clickColumn(int column) override;
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{1, rowCount()}; }
    [[nodiscard]] std::optional<Value> indexedProperty(
        std::string_view property,
        std::span<const int> indices) const override;  // Cell(row,column)

    [[nodiscard]] std::string_view kind() const override { return "list view"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Rows"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
    // Observers are notified of it when rows change or are sorted.
    [[nodiscard]] const void* rowsProperty() const { return &rows_; }

protected:
    void afterChange(const void* property) override;

private:
    struct Row {
        std::vector<std::string> cells;
        std::string tag;
    };
    [[nodiscard]] const Row& row(int number) const;
    void sort();
    [[nodiscard]] std::vector<std::size_t> sortedOrder() const;
    void rearrange(const std::vector<std::size_t>& order);

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

}  // namespace korvane::controls
