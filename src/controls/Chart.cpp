#include "controls/Chart.h"

#include <algorithm>
#include <array>

namespace korvane::controls {

namespace {

const Chart& chart(const Object& object) {
    return dynamic_cast<const Chart&>(object);
}

Chart& chart(Object& object) {
    return dynamic_cast<Chart&>(object);
}

constexpr std::array kChart{
    property<&Chart::RowCount>("RowCount"),
    property<&Chart::ColumnCount>("ColumnCount"),
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

int inside(int place, int count) {
    if (place < 0 || place >= count) {
        platform::raiseSubscript();
    }
    return place;
}

int fromOne(int number, int count) {
    return inside(std::max(number, 0) - 1, count);
}

void cut(std::map<int, std::string>& labels, int count) {
    labels.erase(labels.lower_bound(count), labels.end());
}

}  // namespace

const std::string& Chart::dataAt(int row, int column) const {
    return written(data_, {inside(row, RowCount), inside(column, ColumnCount)});
}

const std::string& Chart::rowLabelAt(int row) const {
    return written(rowLabels_, inside(row, RowCount));
}

const std::string& Chart::columnLabelAt(int column) const {
    return written(columnLabels_, inside(column, ColumnCount));
}

int Chart::row() const {
    return fromOne(Row, RowCount);
}

int Chart::column() const {
    return fromOne(Column, ColumnCount);
}

// A chart of another size starts with empty cells.
void Chart::afterChange(const void* property) {
    if (property == &RowCount || property == &ColumnCount) {
        data_.clear();
        cut(rowLabels_, RowCount);
        cut(columnLabels_, ColumnCount);
    }
}

std::vector<std::span<const PropertyInfo>> Chart::propertyTables() const {
    return withTable<Control>(*this, kChart);
}

}  // namespace korvane::controls
