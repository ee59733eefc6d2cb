#include "views/maps/MapGridLayout.h"

#include <algorithm>

namespace korvane::views {

namespace {

// `count` parts between `first` and `last`, as equal as whole pixels allow.
std::vector<int> edges(int first, int last, int count) {
    std::vector<int> result;
    for (int i = 0; i <= count; ++i) {
        result.push_back(first + (last - first) * i / count);
    }
    return result;
}

std::optional<int> partAt(const std::vector<int>& begins, int position) {
    const auto next = std::upper_bound(begins.begin(), begins.end(), position);
    if (next == begins.begin() || next == begins.end()) {
        return std::nullopt;
    }
    return static_cast<int>(next - begins.begin()) - 1;
}

}  // namespace

void MapGridLayout::divide(QSize size, QSize labels) {
    const auto divided = [](int all, int label, int count) {
        return edges(label + 1, std::max(all, label + 1 + count), count);
    };
    columns_ = divided(size.width(), labels.width(), geometry_.columns);
    rows_ = divided(size.height(), labels.height(), geometry_.rows);
}

std::optional<int> MapGridLayout::cellAt(QPoint point) const {
    const auto column = partAt(columns_, point.x());
    const auto row = partAt(rows_, point.y());
    return column && row ? std::optional(*row * geometry_.columns + *column) : std::nullopt;
}

QRect MapGridLayout::cellRect(int cell) const {
    const auto column = static_cast<std::size_t>(cell % geometry_.columns);
    const auto row = static_cast<std::size_t>(cell / geometry_.columns);
    const QPoint corner(columns_.at(column), rows_.at(row));
    return {corner, QPoint(columns_.at(column + 1) - 2, rows_.at(row + 1) - 2)};
}

QRect MapGridLayout::columnLabelRect(int column) const {
    const auto at = static_cast<std::size_t>(column);
    return {QPoint(columns_.at(at), 0), QPoint(columns_.at(at + 1) - 2, rows_.front() - 1)};
}

QRect MapGridLayout::rowLabelRect(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return {QPoint(0, rows_.at(at)), QPoint(columns_.front() - 1, rows_.at(at + 1) - 2)};
}

QRect MapGridLayout::gridRect() const {
    return {QPoint(columns_.front() - 1, rows_.front() - 1), QPoint(columns_.back() - 1, rows_.back() - 1)};
}

QRect MapGridLayout::rowsRect(int first, int last) const {
    const auto top = rows_.at(static_cast<std::size_t>(first / geometry_.columns));
    const auto bottom = rows_.at(static_cast<std::size_t>(last / geometry_.columns) + 1);
    return {QPoint(columns_.front() - 2, top - 2), QPoint(columns_.back() + 1, bottom + 1)};
}

}  // namespace korvane::views
