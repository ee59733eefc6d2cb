// A map as one widget: it paints all cells and the labels at the edges, and no cell has a widget of its own.
#pragma once

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

#include "maps/grid/MapGeometry.h"
#include "maps/grid/Selection.h"
#include "views/maps/GridCellPainter.h"
#include "views/maps/GridDigits.h"
#include "views/maps/GridLabels.h"
#include "views/maps/MapGridLayout.h"

namespace korvane::views {

// Cells count as those of the grid, row by row from 0; asking for one outside it throws std::out_of_range.
class MapGridView : public QWidget, private SharedDigits::Grid {
public:
    using Cell = GridCell;
    using Label = GridLabel;

    MapGridView(maps::MapGeometry geometry, QWidget* parent);
    ~MapGridView() override;

    void setCell(int cell, Cell look);
    [[nodiscard]] const Cell& cell(int cell) const { return cells_.at(static_cast<std::size_t>(cell)); }
    void setColumnLabel(int column, Label label);
    void setRowLabel(int row, Label label);
    [[nodiscard]] const Label& columnLabel(int column) const { return labels_.column(column); }
    [[nodiscard]] const Label& rowLabel(int row) const { return labels_.row(row); }
    // Of the usual text, for screens on which the cells are small.
    void setTextScale(double scale);
    // The numbers get the size of those of the other grids that share it.
    void shareDigits(std::shared_ptr<SharedDigits> shared);

    // Stands across the middle of the cells, in its own size; a child of this widget.
    void setOverlay(QWidget& overlay);

    // The cell that is marked while the widget has the focus.
    void setFocusCell(std::optional<int> cell);
    [[nodiscard]] std::optional<int> focusCell() const { return focusCell_; }
    // The cell with a ring: the engine runs there now.
    void setEngineCell(std::optional<int> cell);
    [[nodiscard]] std::optional<int> engineCell() const { return engineCell_; }
    // The cells with an outline: the selected block.
    void setBlock(std::optional<maps::CellRange> block);
    [[nodiscard]] std::optional<maps::CellRange> block() const { return block_; }

    // The cells that nobody has told anything of show a question mark in place of their number. None where it is empty.
    void setUnread(std::vector<bool> unread);
    [[nodiscard]] bool isUnread(int cell) const;
    // What is painted in a cell.
    [[nodiscard]] Cell shown(int cell) const;

    // A bar in each cell by how high its number is; the bars follow the numbers with fitLook().
    void setTinted(bool tinted);
    // The numbers' decimal points below each other.
    void setAligned(bool aligned);
    // After cells have changed.
    void fitLook();
    // Of maps::heatLevels(); nothing while there are no bars.
    [[nodiscard]] std::optional<int> heatOf(int cell) const;
    // The pixel size of the numbers.
    [[nodiscard]] int digitPixels() const { return digitPixels_; }

    [[nodiscard]] const maps::MapGeometry& geometry() const { return layout_.geometry(); }
    // Nothing where there are labels.
    [[nodiscard]] std::optional<int> cellAt(QPoint point) const { return layout_.cellAt(point); }
    [[nodiscard]] QRect cellRect(int cell) const { return layout_.cellRect(cell); }
    // "Fuel 1500 rpm 10-20", and what its colours and marks say.
    [[nodiscard]] QString nameOf(int cell) const;
    [[nodiscard]] QString stateOf(int cell) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int usualPixels() const;
    [[nodiscard]] QSize sizeFor(double cellWidth, double cellHeight) const;
    [[nodiscard]] std::optional<int> markedCell() const { return hasFocus() ? focusCell_ : std::nullopt; }

    void layOut();
    void placeOverlay();
    void fitText();
    void tellRoom();
    [[nodiscard]] DigitRoom ownRoom() const;
    void sharedRoomChanged() override;
    void alignTexts();
    [[nodiscard]] std::vector<int> levels() const;
    void repaintCell(int cell);
    void repaintMark();
    void repaintBlock();
    void announce(int cell) const;
    void paintCells(QPainter& painter, const QRegion& region) const;

    MapGridLayout layout_;
    GridLabels labels_;
    GridCellPainter painter_;
    std::vector<Cell> cells_;
    std::optional<int> focusCell_;
    std::optional<int> engineCell_;
    std::optional<maps::CellRange> block_;

    GridTexts texts_;
    std::shared_ptr<SharedDigits> shared_;
    QWidget* overlay_ = nullptr;
    double textScale_ = 1;
    std::vector<bool> unread_;
    int digitPixels_ = 0;
    bool aligned_ = false;
    std::vector<int> heat_;     // the level of each cell; empty without bars
    bool textsChanged_ = true;  // since fitLook()
    int changes_ = 0;           // cells that wait to be painted
};

}  // namespace korvane::views
