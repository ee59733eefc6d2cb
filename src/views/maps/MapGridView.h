// A map as one widget: it paints all cells and the labels at the edges, and no cell has a widget of its own.
#pragma once

#include <QWidget>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "controls/Color.h"
#include "maps/grid/MapGeometry.h"
#include "views/widgets/values/TabularText.h"

namespace korvane::views {

// Cells count as those of the grid, row by row from 0; asking for one outside it throws std::out_of_range.
class MapGridView : public QWidget {
public:
    struct Cell {
        QString text;
        controls::Color back = controls::kWhite;
        controls::Color fore = controls::kBlack;
        bool bold = false;
        bool enabled = true;

        friend bool operator==(const Cell&, const Cell&) = default;
    };
    struct Label {
        QString text;
        bool bold = false;

        friend bool operator==(const Label&, const Label&) = default;
    };

    MapGridView(maps::MapGeometry geometry, QWidget* parent);

    void setCell(int cell, Cell look);
    [[nodiscard]] const Cell& cell(int cell) const { return cells_.at(static_cast<std::size_t>(cell)); }
    void setColumnLabel(int column, Label label);
    void setRowLabel(int row, Label label);
    [[nodiscard]] const Label& columnLabel(int column) const {
        return columnLabels_.at(static_cast<std::size_t>(column));
    }
    [[nodiscard]] const Label& rowLabel(int row) const { return rowLabels_.at(static_cast<std::size_t>(row)); }
    // Of the usual text, for screens on which the cells are small.
    void setTextScale(double scale);
    // The cell that is marked while the widget has the focus.
    void setFocusCell(std::optional<int> cell);
    [[nodiscard]] std::optional<int> focusCell() const { return focusCell_; }

    [[nodiscard]] const maps::MapGeometry& geometry() const { return geometry_; }
    // Nothing where there are labels.
    [[nodiscard]] std::optional<int> cellAt(QPoint point) const;
    [[nodiscard]] QRect cellRect(int cell) const;
    // "Fuel 1500 rpm 10-20", and what its colours say.
    [[nodiscard]] QString nameOf(int cell) const;
    [[nodiscard]] QString stateOf(int cell) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Colors {
        QColor back, fore;
    };

    [[nodiscard]] int usualPixels() const;
    [[nodiscard]] QSize sizeFor(int cellWidth, int cellHeight) const;
    [[nodiscard]] int rowLabelWidth() const;
    [[nodiscard]] int headerHeight() const;
    [[nodiscard]] QRect columnLabelRect(int column) const;
    [[nodiscard]] QRect rowLabelRect(int row) const;
    [[nodiscard]] Colors colorsOf(const Cell& cell) const;

    void layOut();
    void fitText();
    void countText(const QString& text, int change);
    [[nodiscard]] int longestText() const;
    void repaintCell(int cell);
    void repaintMark();
    void announce(int cell) const;

    void paintCell(QPainter& painter, int cell) const;
    void paintText(QPainter& painter, const QRect& place, const Cell& cell, const Colors& colors) const;
    void paintMark(QPainter& painter) const;
    void paintLabels(QPainter& painter, const QRegion& region) const;
    void paintLabel(QPainter& painter, const QRect& place, const Label& label, Qt::Alignment alignment,
                    bool marked) const;

    maps::MapGeometry geometry_;
    std::vector<Cell> cells_;
    std::vector<Label> columnLabels_;
    std::vector<Label> rowLabels_;
    double textScale_ = 1;
    std::optional<int> focusCell_;
    // How many cells have a text of each length; longer ones count as the last.
    std::array<int, 7> lengths_{};

    // Where columns and rows begin, with the end of the last.
    std::vector<int> columns_;
    std::vector<int> rows_;
    TabularText plain_, bold_;
    TabularText plainLabel_, boldLabel_;
    int changes_ = 0;  // cells that wait to be painted
};

}  // namespace korvane::views
