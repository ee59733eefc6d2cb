// Where the cells and labels of a map grid lie in its widget.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>
#include <vector>

#include "maps/grid/MapGeometry.h"

namespace korvane::views {

// Cells count as those of the grid, row by row from 0; asking for one outside it throws std::out_of_range.
class MapGridLayout {
public:
    explicit MapGridLayout(maps::MapGeometry geometry) : geometry_(geometry) {}

    // Divides a widget of this size; `labels` are the width of the row labels and the height of the column labels.
    void divide(QSize size, QSize labels);

    [[nodiscard]] const maps::MapGeometry& geometry() const { return geometry_; }
    // Nothing where there are labels.
    [[nodiscard]] std::optional<int> cellAt(QPoint point) const;
    [[nodiscard]] QRect cellRect(int cell) const;
    [[nodiscard]] QRect columnLabelRect(int column) const;
    [[nodiscard]] QRect rowLabelRect(int row) const;
    // All cells with the lines around them.
    [[nodiscard]] QRect gridRect() const;
    // The rows from that of one cell to that of another, with the lines around them.
    [[nodiscard]] QRect rowsRect(int first, int last) const;

private:
    maps::MapGeometry geometry_;
    // Where columns and rows begin, with the end of the last.
    std::vector<int> columns_;
    std::vector<int> rows_;
};

}  // namespace korvane::views
