// The cells of a map with what differs between two sides, as a control.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::keep {

enum class Sign { None, Up, Down };

struct DiffCell {
    std::string left, right;  // "?" for a cell that is not known
    std::string delta;        // "+0.2"; empty where nothing differs
    Sign sign = Sign::None;   // whether the right one is more or less
    std::string words;        // all of it as a sentence

    friend bool operator==(const DiffCell&, const DiffCell&) = default;
};

// A click on a cell selects it and raises ItemClick.
class DiffGrid : public controls::Control {
public:
    using Control::Control;

    controls::Property<int> SelectedItem{*this, -1};  // a cell from 0, -1 for none
    controls::Property<bool> ShowEqual{*this};        // the numbers of cells that do not differ, too
    controls::Event<> ItemClick;

    // A selection that is not in the new shape is given up.
    void show(maps::MapGeometry shape, std::vector<DiffCell> cells);
    void clear() { show(shape_, {}); }
    [[nodiscard]] maps::MapGeometry shape() const { return shape_; }
    // Empty, or as many as the shape has.
    [[nodiscard]] const std::vector<DiffCell>& cells() const { return cells_; }
    // Observers are told with it when the cells change.
    [[nodiscard]] const void* cellsProperty() const { return &cells_; }

    // RuntimeError 9 for a cell that does not exist.
    void clickCell(int cell);
    // Picking the cell that is selected raises nothing.
    void choose(int cell) override;
    [[nodiscard]] std::optional<Choices> choices() const override;
    // Cell(n): its words.
    [[nodiscard]] std::optional<controls::Value> indexedProperty(std::string_view property,
                                                                 std::span<const int> indices) const override;

    [[nodiscard]] std::string_view kind() const override { return "grid of differences"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "SelectedItem"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

private:
    maps::MapGeometry shape_ = maps::kOrdinaryMaps;
    std::vector<DiffCell> cells_;
};

}  // namespace korvane::keep
