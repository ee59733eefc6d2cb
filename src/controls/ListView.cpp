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
        throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
    }
    return elements[static_cast<std::size_t>(number) - 1];
}

// The row of a whole number from 0 to a limit that the list sets.
template <Property<int> ListView::*Member, auto Limit>
constexpr PropertyInfo bounded(std::string_view name) {
    PropertyInfo info = property<Member>(name);
    info.set = [](Object& object, const Value& value) {
        auto& list = dynamic_cast<ListView&>(object);
        const int number = detail::fromValue<int>(value);
        if (number < 0 || number > Limit(list)) {
            detail::wrongKind("in the range of the list");
        }
        list.*Member = number;
    };
    return info;
}

int rowsOf(const ListView& list) {
    return list.rowCount();
}
int lastColumnOf(const ListView& list) {
    return std::max(list.columnCount() - 1, 0);
}
int fallingOf(const ListView&) {
    return 1;
}

Value rowsValue(const Object& object) {
    return std::int64_t{dynamic_cast<const ListView&>(object).rowCount()};
}

constexpr std::array kListView{
    readOnlyProperty<&rowsValue>("Rows"),
    bounded<&ListView::SelectedItem, rowsOf>("SelectedItem"),
    bounded<&ListView::SortKey, lastColumnOf>("SortKey"),
    bounded<&ListView::SortOrder, fallingOf>("SortOrder"),
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
