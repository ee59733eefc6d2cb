#include "trend/TrendTable.h"

#include <algorithm>

#include "core/Checked.h"

namespace korvane::trend {

TrendTable::TrendTable() {
    for (auto& series : series_) {
        series.room.resize(kRoom);
        series.head = kRoom - kSamples;
    }
}

void TrendTable::describe(int series, std::string name, std::string unit) {
    auto& row = core::checked(series_, series);
    row.name = std::move(name);
    row.unit = std::move(unit);
}

void TrendTable::push(double value, int series) {
    auto& row = core::checked(series_, series);
    if (row.head == 0) {
        row.head = kRoom - kSamples;
        std::copy_n(row.room.begin(), kSamples - 1, row.room.begin() + static_cast<std::ptrdiff_t>(row.head + 1));
        ++row.head;
    }
    row.room[--row.head] = value;
    row.pushed = true;
}

double TrendTable::value(int series, int row) const {
    return rows(series, row, row).front();
}

std::span<const double> TrendTable::rows(int series, int first, int last) const {
    const auto& row = at(series);
    if (first < kNewestRow || last > kLastRow || last < first) {
        platform::raiseSubscript();
    }
    return std::span(row.room).subspan(row.head + static_cast<std::size_t>(first - kNewestRow),
                                       static_cast<std::size_t>(last - first) + 1);
}

const TrendTable::Series& TrendTable::at(int series) const {
    return core::checked(series_, series);
}

}  // namespace korvane::trend
