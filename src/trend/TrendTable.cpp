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
    beforeMove();
    row.name = std::move(name);
    row.unit = std::move(unit);
}

void TrendTable::push(double value, int series) {
    auto& row = core::checked(series_, series);
    if (row.head == 0) {
        moveUp(row);
    }
    row.room[--row.head] = value;
    ++row.pushes;
}

void TrendTable::beforeMove() const {
    if (BeforeMove) {
        BeforeMove();
    }
}

void TrendTable::moveUp(Series& row) const {
    beforeMove();
    row.head = kRoom - kSamples + 1;
    std::copy_n(row.room.begin(), kSamples - 1, row.room.begin() + static_cast<std::ptrdiff_t>(row.head));
}

double TrendTable::value(int series, int row) const {
    return rows(series, row, row).front();
}

std::span<const double> TrendTable::rows(int series, int first, int last) const {
    const auto& row = at(series);
    if (first < kNewestRow || last > kLastRow || last < first) {
        platform::raiseSubscript();
    }
    return row.samples().subspan(static_cast<std::size_t>(first - kNewestRow),
                                 static_cast<std::size_t>(last - first) + 1);
}

std::array<TrendSeries, TrendTable::kSeries> TrendTable::seen() const {
    std::array<TrendSeries, kSeries> all;
    std::transform(series_.begin(), series_.end(), all.begin(), [](const Series& row) {
        return TrendSeries{row.name, row.unit, row.pushes != 0, row.samples()};
    });
    return all;
}

double TrendTable::peak(int series, int last) const {
    const auto& row = at(series);
    return row.peak.of(rows(series, kNewestRow, last), row.pushes);
}

const TrendTable::Series& TrendTable::at(int series) const {
    return core::checked(series_, series);
}

}  // namespace korvane::trend
