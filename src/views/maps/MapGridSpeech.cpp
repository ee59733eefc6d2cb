#include "views/maps/MapGridSpeech.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <memory>
#include <vector>

#include "views/maps/MapGridView.h"

namespace korvane::views {

namespace {

class SpokenCell : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    SpokenCell(MapGridView& grid, int cell) : grid_(&grid), cell_(cell) {}

    [[nodiscard]] bool isValid() const override { return !grid_.isNull(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(grid_.data());
    }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        switch (kind) {
            case QAccessible::Name:
                return grid_->nameOf(cell_);
            case QAccessible::Value:
                return grid_->shown(cell_).text;
            case QAccessible::Description:
                return grid_->stateOf(cell_);
            default:
                return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QRect rect() const override {
        const QRect place = grid_->cellRect(cell_);
        return {grid_->mapToGlobal(place.topLeft()), place.size()};
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.disabled = !grid_->cell(cell_).enabled || !grid_->isEnabled();
        state.focusable = !state.disabled;
        state.focused = grid_->hasFocus() && grid_->focusCell() == cell_;
        state.selectable = true;
        state.selected = isSelected();
        state.readOnly = true;
        state.invisible = !grid_->isVisible();
        return state;
    }

    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }

    [[nodiscard]] bool isSelected() const override { return grid_->cell(cell_).back == controls::kGreen; }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return cell_ % grid_->geometry().columns; }
    [[nodiscard]] int rowIndex() const override { return cell_ / grid_->geometry().columns; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

    [[nodiscard]] int cell() const { return cell_; }

private:
    QPointer<MapGridView> grid_;
    int cell_;
};

class SpokenGrid : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit SpokenGrid(MapGridView& grid)
        : QAccessibleWidget(&grid, QAccessible::Table),
          grid_(grid),
          cells_(static_cast<std::size_t>(grid.geometry().cells()), 0U) {}
    SpokenGrid(const SpokenGrid&) = delete;
    SpokenGrid& operator=(const SpokenGrid&) = delete;
    ~SpokenGrid() override {
        for (const auto id : cells_) {
            if (id != 0) {
                QAccessible::deleteAccessibleInterface(id);
            }
        }
    }

    [[nodiscard]] int childCount() const override { return grid_.geometry().cells(); }
    // Made when it is first asked for; the toolkit's cache owns it from then on.
    [[nodiscard]] QAccessibleInterface* child(int cell) const override {
        if (cell < 0 || cell >= childCount()) {
            return nullptr;
        }
        auto& id = cells_[static_cast<std::size_t>(cell)];
        if (id == 0) {
            // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
            id = QAccessible::registerAccessibleInterface(std::make_unique<SpokenCell>(grid_, cell).release());
        }
        return QAccessible::accessibleInterface(id);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const cell = dynamic_cast<const SpokenCell*>(child);
        return cell != nullptr ? cell->cell() : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto cell = grid_.cellAt(grid_.mapFromGlobal(QPoint(x, y)));
        return cell ? child(*cell) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return grid_.hasFocus() && grid_.focusCell() ? child(*grid_.focusCell()) : nullptr;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = true;
        return state;
    }
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        const bool inside = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
        return inside ? child(row * columnCount() + column) : nullptr;
    }
    [[nodiscard]] int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> selected;
        for (int cell = 0; cell < childCount(); ++cell) {
            if (grid_.cell(cell).back == controls::kGreen) {
                selected << child(cell);
            }
        }
        return selected;
    }
    [[nodiscard]] QString columnDescription(int column) const override { return grid_.columnLabel(column).text; }
    [[nodiscard]] QString rowDescription(int row) const override { return grid_.rowLabel(row).text; }
    [[nodiscard]] int columnCount() const override { return grid_.geometry().columns; }
    [[nodiscard]] int rowCount() const override { return grid_.geometry().rows; }

    // Blocks are of cells, and are chosen with the keys and the mouse.
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return 0; }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override { return {}; }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    MapGridView& grid_;
    mutable std::vector<QAccessible::Id> cells_;
};

}  // namespace

QAccessibleInterface* speakGrid(MapGridView& grid) {
    return std::make_unique<SpokenGrid>(grid).release();
}

}  // namespace korvane::views
