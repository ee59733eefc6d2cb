#include "platform/Chart.h"

#include <array>

namespace korvane::platform {

namespace {

constexpr int kMostRows = 1000;

const Chart& chart(const Object& object) {
    return dynamic_cast<const Chart&>(object);
}

Chart& chart(Object& object) {
    return dynamic_cast<Chart&>(object);
}

template <Property<int> Chart::*Member>
constexpr PropertyInfo size(std::string_view name) {
    return {name, [](const Object& object) -> Value { return std::int64_t{(chart(object).*Member).get()}; },
            [](Object& object, const Value& value) {
                const auto count = detail::fromValue<int>(value);
                if (count < 0 || count > kMostRows) {
                    detail::wrongKind("a number from 0 to 1000");
                }
                chart(object).*Member = count;
            }};
}

constexpr std::array kChart{
    size<&Chart::RowCount>("RowCount"),
    size<&Chart::ColumnCount>("ColumnCount"),
    property<&Chart::Row>("Row"),
    property<&Chart::Column>("Column"),
    PropertyInfo{
        "Data", [](const Object& object) -> Value { return chart(object).Data(); },
        [](Object& object, const Value& value) { chart(object).setData(detail::fromValue<std::string>(value)); }},
    PropertyInfo{
        "RowLabel", [](const Object& object) -> Value { return chart(object).RowLabel(); },
        [](Object& object, const Value& value) { chart(object).setRowLabel(detail::fromValue<std::string>(value)); }},
    PropertyInfo{"ColumnLabel", [](const Object& object) -> Value { return chart(object).ColumnLabel(); },
                 [](Object& object, const Value& value) {
                     chart(object).setColumnLabel(detail::fromValue<std::string>(value));
                 }},
};

std::size_t place(int number, int count) {
    if (number < 1 || number > count) {
        throw RuntimeError(kErrorSubscript, "Subscript out of range");
    }
    return static_cast<std::size_t>(number) - 1;
}

}  // namespace

const std::string& Chart::dataAt(int row, int column) const {
    return data_[place(row + 1, RowCount) * static_cast<std::size_t>(ColumnCount) + place(column + 1, ColumnCount)];
}

const std::string& Chart::rowLabelAt(int row) const {
    return rowLabels_[place(row + 1, RowCount)];
}

const std::string& Chart::columnLabelAt(int column) const {
    return columnLabels_[place(column + 1, ColumnCount)];
}

std::size_t Chart::row() const {
    return place(Row, RowCount);
}

std::size_t Chart::column() const {
    return place(Column, ColumnCount);
}

std::size_t Chart::cell() const {
    return row() * static_cast<std::size_t>(ColumnCount) + column();
}

// A chart of another size starts with empty cells.
void Chart::afterChange(const void* property) {
    if (property == &RowCount || property == &ColumnCount) {
        const auto rows = static_cast<std::size_t>(RowCount);
        const auto columns = static_cast<std::size_t>(ColumnCount);
        data_.assign(rows * columns, {});
        rowLabels_.resize(rows);
        columnLabels_.resize(columns);
    }
}

std::vector<std::span<const PropertyInfo>> Chart::propertyTables() const {
    return withTable<Control>(*this, kChart);
}

}  // namespace korvane::platform
