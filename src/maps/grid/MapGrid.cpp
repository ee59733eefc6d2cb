#include "maps/grid/MapGrid.h"

#include <string>

#include "core/Numbers.h"

namespace korvane::maps {

namespace {

constexpr int kCellWidth = 495;  // twips
constexpr int kCellHeight = 240;
constexpr int kLabelWidth = 720;
constexpr int kFirstRow = 200;
constexpr double kRowPitch = 1.1;  // of the cell's height

}  // namespace

MapGrid::MapGrid(controls::Window& window, const MapGridNames& names, MapGeometry shape, controls::Control& frame)
    : geometry(shape),
      cells(window, names.cells, shape.cells()),
      columnLabels(window, names.columnLabels, shape.columns),
      rowLabels(window, names.rowLabels, shape.rows) {
    for (auto& cell : cells) {
        cell.setContainer(&frame);
        cell.Locked = true;
        cell.BackColor = controls::kWhite;
        cell.Width = kCellWidth;
        cell.Height = kCellHeight;
    }
    for (int column = 0; column < shape.columns; ++column) {
        columnLabels(column).setContainer(&frame);
        columnLabels(column).Caption = std::to_string(shape.rpmOf(column));
    }
    for (int row = 0; row < shape.rows; ++row) {
        rowLabels(row).setContainer(&frame);
        rowLabels(row).Caption = std::to_string(row * 10) + "-" + std::to_string((row + 1) * 10);
    }
    rowLabels(0).Caption = "kuorma";
}

std::optional<int> MapGrid::beside(int cell, int keyCode) const {
    const int columns = geometry.columns;
    if (keyCode == controls::kKeyLeft && cell % columns != 0) {
        return cell - 1;
    }
    if (keyCode == controls::kKeyRight && (cell + 1) % columns != 0) {
        return cell + 1;
    }
    if (keyCode == controls::kKeyUp && cell >= columns) {
        return cell - columns;
    }
    if (keyCode == controls::kKeyDown && cell < geometry.cells() - columns) {
        return cell + columns;
    }
    return {};
}

void MapGrid::place() {
    for (int column = 0; column < geometry.columns; ++column) {
        auto& label = columnLabels(column);
        label.Left = kLabelWidth + column * (kCellWidth + 15);
        label.Top = kFirstRow;
        label.Width = kCellWidth;
        label.Height = kCellHeight;
    }
    for (int row = 0; row < geometry.rows; ++row) {
        auto& label = rowLabels(row);
        label.Left = 60;
        label.Width = kLabelWidth - 90;
        label.Height = kCellHeight;
        label.Top = core::toInt32((row + 1) * kCellHeight * kRowPitch + kFirstRow);
    }
    for (int cell = 0; cell < geometry.cells(); ++cell) {
        cells(cell).Left = columnLabels(cell % geometry.columns).Left.get();
        cells(cell).Top = rowLabels(cell / geometry.columns).Top.get();
    }
}

}  // namespace korvane::maps
