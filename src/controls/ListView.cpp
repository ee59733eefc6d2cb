#include "controls/ListView.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace korvane::controls {

namespace {

// An element counted from 1.
template <class Elements>
auto& numbered(Elements& elements, int number) {
    if (number < 1 || number > static_cast<int>(elements.size())) {
        platform::raiseSubscript();
    }
    return elements[static_cast<std::size_t>(number) - 1];
}

const char* from0To(int limit, int number) {
    return number >= 0 && number <= limit ? nullptr : "in the range of the list";
}

const char* wantedRow(const ListView& list, int row) {
    return from0To(list.rowCount(), row);
}

const char* wantedKey(const ListView& list, int column) {
    return from0To(std::max(list.columnCount() - 1, 0), column);
}

const char* wantedOrder(const ListView&, int order) {
    return from0To(1, order);
}

Value rowsValue(const Object& object) {
    return std::int64_t{dynamic_cast<const ListView&>(object).rowCount()};
}

constexpr std::array kListView{
    readOnlyProperty<&rowsValue>("Rows"),
    limitedProperty<&ListView::SelectedItem, wantedRow>("SelectedItem"),
    limitedProperty<&ListView::SortKey, wantedKey>("SortKey"),
    limitedProperty<&ListView::SortOrder, wantedOrder>("SortOrder"),
    property<&ListView::Sorted>("Sorted"),
};

}  // namespace

void ListView::addColumn(std::string heading, std::string tag) {
    columns_.push_back({std::move(heading), std::move(tag)});
    for (auto& row : rows_) {
        row.cells.resize(columns_.size());
    }
    changed(rowsProperty());
}

void ListView::addRow(std::vector<std::string> cells) {
    cells.resize(columns_.size());
    rows_.push_back({std::move(cells), {}});
    if (Sorted) {
        sort();
    } else {
        changed(rowsProperty());
    }
}

void ListView::clearRows() {
    rows_.clear();
    changed(rowsProperty());
    SelectedItem = 0;
}

const ListView::Column& ListView::column(int number) const {
    return numbered(columns_, number);
}

const ListView::Row& ListView::row(int number) const {
    return numbered(rows_, number);
}

const std::string& ListView::Cell(int row, int column) const {
    return numbered(this->row(row).cells, column);
}

void ListView::setCell(int row, int column, std::string text) {
    auto& cell = numbered(numbered(rows_, row).cells, column);
    if (cell != text) {
        cell = std::move(text);
        changed(rowsProperty());
    }
}

const std::string& ListView::rowTag(int row) const {
    return this->row(row).tag;
}

void ListView::setRowTag(int row, std::string text) {
    numbered(rows_, row).tag = std::move(text);
}

void ListView::clickRow(int row) {
    static_cast<void>(this->row(row));
    SelectedItem = row;
    raise(ItemClick, row);
}

void ListView::choose(int row) {
    if (row != SelectedItem) {
        clickRow(row);
    }
}

void ListView::clickColumn(int column) {
    static_cast<void>(this->column(column));
    raise(ColumnClick, column);
}

std::optional<Value> ListView::indexedProperty(std::string_view property, std::span<const int> indices) const {
    if (property != "Cell" || indices.size() != 2) {
        return {};
    }
    return Cell(indices[0], indices[1]);
}

std::vector<std::span<const PropertyInfo>> ListView::propertyTables() const {
    return withTable<Control>(*this, kListView);
}

void ListView::afterChange(const void* property) {
    if (Sorted && (property == &SortKey || property == &SortOrder || property == &Sorted)) {
        sort();
    }
}

void ListView::sort() {
    if (SortKey >= 0 && SortKey < columnCount()) {
        rearrange(sortedOrder());
    } else {
        changed(rowsProperty());
    }
}

// Indices into rows_ in sorted order.
std::vector<std::size_t> ListView::sortedOrder() const {
    const auto key = static_cast<std::size_t>(SortKey.get());
    std::vector<std::size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        const auto& first = rows_[one].cells[key];
        const auto& second = rows_[other].cells[key];
        return SortOrder == 0 ? first < second : second < first;
    });
    return order;
}

void ListView::rearrange(const std::vector<std::size_t>& order) {
    std::vector<Row> rows;
    rows.reserve(order.size());
    int selected = 0;
    for (const std::size_t from : order) {
        rows.push_back(std::move(rows_[from]));
        if (static_cast<int>(from) + 1 == SelectedItem) {
            selected = static_cast<int>(rows.size());
        }
    }
    rows_ = std::move(rows);
    changed(rowsProperty());
    SelectedItem = selected;
}

}  // namespace korvane::controls
