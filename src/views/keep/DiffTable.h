// A map as a table of differences: the difference and both values in each cell, its sign by mark and by colour.
#pragma once

#include <QTableView>

#include <functional>
#include <vector>

#include "keep/compare/DiffGrid.h"
#include "views/frame/Binder.h"

namespace korvane::views {

class DiffTable : public QTableView {
public:
    explicit DiffTable(QWidget* parent);

    struct Cell {
        QString top;     // "▲ +0.2"
        QString bottom;  // "2.3 → 2.5"
        QString words;
        keep::Sign sign = keep::Sign::None;

        friend bool operator==(const Cell&, const Cell&) = default;
    };
    void setCells(maps::MapGeometry shape, std::vector<Cell> cells);
    // -1 selects none.
    void select(int cell);
    // The user has gone to a cell.
    void onCell(std::function<void(int cell)> handler) { cellChosen_ = std::move(handler); }

    // Binds it to its control.
    static void bind(Binder& binder, keep::DiffGrid& grid, DiffTable& table);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;

private:
    class Cells;
    class Painter;

    void fitCells();

    Cells& cells_;
    std::function<void(int cell)> cellChosen_;
    bool quiet_ = false;
};

}  // namespace korvane::views
