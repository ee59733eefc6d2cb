// A chart of rows by columns, each with a label, as the window's code fills it cell by cell.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "controls/Control.h"

namespace korvane::controls {

// Row and Column, counted from 1, select the cell that Data and the labels are about. RuntimeError 9 for what lies
// outside RowCount by ColumnCount. Any size is allowed: only cells that were written take memory, the rest is empty.
class Chart : public Control {
public:
    using Control::Control;

    Property<int> RowCount{*this}, ColumnCount{*this};
    Property<int> Row{*this, 1}, Column{*this, 1};

    void setData(std::string text) { data_[cell()] = std::move(text); }
    void setRowLabel(std::string text) { rowLabels_[row()] = std::move(text); }
    void setColumnLabel(std::string text) { columnLabels_[column()] = std::move(text); }
    [[nodiscard]] const std::string& Data() const { return written(data_, cell()); }
    [[nodiscard]] const std::string& RowLabel() const { return written(rowLabels_, row()); }
    [[nodiscard]] const std::string& ColumnLabel() const { return written(columnLabels_, column()); }

    // The same by row and column, counted from 0, for code that shows the whole chart.
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
    using Cell = std::pair<int, int>;

    [[nodiscard]] int row() const;
    [[nodiscard]] int column() const;
    [[nodiscard]] Cell cell() const { return {row(), column()}; }

    template <class Texts>
    [[nodiscard]] const std::string& written(const Texts& texts, const typename Texts::key_type& place) const {
        const auto found = texts.find(place);
        return found != texts.end() ? found->second : empty_;
    }

    // By row and column, counted from 0.
    std::map<Cell, std::string> data_;
    std::map<int, std::string> rowLabels_, columnLabels_;
    const std::string empty_;
};

}  // namespace korvane::controls
