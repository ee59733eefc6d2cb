// A chart of rows by columns, each with a label, as the window's code fills it cell by cell.
#pragma once

#include <string>
#include <vector>

#include "platform/Control.h"

namespace korvane::platform {

// Row and Column, counted from 1, select the cell that Data and the labels are about. RuntimeError 9 for what lies
// outside RowCount by ColumnCount.
class Chart : public Control {
public:
    using Control::Control;

    Property<int> RowCount{*this}, ColumnCount{*this};
    Property<int> Row{*this, 1}, Column{*this, 1};

    void setData(std::string text) { data_[cell()] = std::move(text); }
    void setRowLabel(std::string text) { rowLabels_[row()] = std::move(text); }
    void setColumnLabel(std::string text) { columnLabels_[column()] = std::move(text); }
    [[nodiscard]] const std::string& Data() const { return data_[cell()]; }
    [[nodiscard]] const std::string& RowLabel() const { return rowLabels_[row()]; }
    [[nodiscard]] const std::string& ColumnLabel() const { return columnLabels_[column()]; }

    // The same by place, counted from 0, for whoever shows the whole chart.
    [[nodiscard]] const std::string& dataAt(int row, int column) const;
    [[nodiscard]] const std::string& rowLabelAt(int row) const;
    [[nodiscard]] const std::string& columnLabelAt(int column) const;

    // Shows the new data.
    void Refresh() { changed(dataProperty()); }
    [[nodiscard]] const void* dataProperty() const { return &data_; }

    [[nodiscard]] std::string_view kind() const override { return "chart"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Data"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;

private:
    [[nodiscard]] std::size_t row() const;
    [[nodiscard]] std::size_t column() const;
    [[nodiscard]] std::size_t cell() const;

    std::vector<std::string> data_;  // row by row
    std::vector<std::string> rowLabels_, columnLabels_;
};

}  // namespace korvane::platform
