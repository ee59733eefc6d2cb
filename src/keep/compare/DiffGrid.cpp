#include "keep/compare/DiffGrid.h"

#include <array>
#include <utility>

#include "core/Checked.h"

namespace korvane::keep {

namespace {

int cellCount(const DiffGrid& grid) {
    return static_cast<int>(grid.cells().size());
}

const char* wantedCell(const DiffGrid& grid, int cell) {
    return cell >= -1 && cell < cellCount(grid) ? nullptr : "a cell of the grid";
}

controls::Value countOfCells(const controls::Object& object) {
    return std::int64_t{cellCount(dynamic_cast<const DiffGrid&>(object))};
}

constexpr std::array kProperties{
    controls::readOnlyProperty<&countOfCells>("Cells"),
    controls::limitedProperty<&DiffGrid::SelectedItem, wantedCell>("SelectedItem"),
};

}  // namespace

void DiffGrid::show(maps::MapGeometry shape, std::vector<DiffCell> cells) {
    const bool sameShape = shape.rows == shape_.rows && shape.columns == shape_.columns;
    if (sameShape && cells == cells_) {
        return;
    }
    shape_ = shape;
    cells_ = std::move(cells);
    if (!sameShape || SelectedItem >= cellCount(*this)) {
        SelectedItem = -1;
    }
    changed(cellsProperty());
}

void DiffGrid::clickCell(int cell) {
    static_cast<void>(core::checked(cells_, cell));
    SelectedItem = cell;
    raise(ItemClick);
}

void DiffGrid::choose(int cell) {
    if (cell != SelectedItem) {
        clickCell(cell);
    }
}

std::optional<controls::Control::Choices> DiffGrid::choices() const {
    return Choices{0, cellCount(*this)};
}

std::optional<controls::Value> DiffGrid::indexedProperty(std::string_view property,
                                                         std::span<const int> indices) const {
    if (property != "Cell" || indices.size() != 1) {
        return {};
    }
    return core::checked(cells_, indices[0]).words;
}

std::vector<std::span<const controls::PropertyInfo>> DiffGrid::propertyTables() const {
    return controls::withTable<Control>(*this, kProperties);
}

}  // namespace korvane::keep
