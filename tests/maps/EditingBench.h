// A shown map window whose grids are edited by keys and mouse.
#pragma once

#include <memory>

#include "MapsBench.h"
#include "core/Checked.h"

namespace korvane::maps {

using controls::kKeyDown;
using controls::kKeyLeft;
using controls::kKeyPlus;
using controls::kKeyRight;
using controls::kKeyShift;
using controls::kKeyUp;
using controls::kWhite;
using controls::kYellow;

inline constexpr int kNoShift = 0;
inline constexpr int kShift = controls::kShiftMask;
inline constexpr int kControl = controls::kControlMask;

class EditingBench : public MapsBench {
protected:
    EditingBench(MapGeometry shape, InjectionScale scale, Pointing pointing)
        : window_(machine_.machine, context_, shape, scale, Halves::One, pointing) {
        setParameter(tables_.addresses.INJ_MODE_OFFSET, 2);
        window_.show();
    }

    // A key as a user presses it: on a cell that gets the focus first, released where the focus is by then.
    void key(MapGrid& grid, int cell, int keyCode, int shift = kNoShift) {
        window_.setFocus(&grid(cell));
        grid(cell).keyDown(keyCode, shift);
        if (auto* const focused = window_.activeControl(); focused != nullptr) {
            focused->keyUp(keyCode, shift);
        }
    }
    void click(MapGrid& grid, int cell, int shift = kNoShift) {
        window_.setFocus(&grid(cell));
        grid(cell).mouseUp(1, shift, 0.0, 0.0);
    }
    // The cell with the focus; -1 for no cell of the grid.
    [[nodiscard]] int focusIn(MapGrid& grid) {
        for (int cell = 0; cell < grid.geometry.cells(); ++cell) {
            if (window_.activeControl() == &grid(cell)) {
                return cell;
            }
        }
        return -1;
    }

    static void selectBlock(MapGrid& grid, int first, int last) {
        grid.SelFirst = static_cast<std::int16_t>(first + 1);
        grid.SelLast = static_cast<std::int16_t>(last + 1);
    }
    // The ends by cell index; -1 for none.
    static std::pair<int, int> block(const MapGrid& grid) { return {grid.SelFirst - 1, grid.SelLast - 1}; }

    static std::vector<int> cellsOf(MapGrid& grid, controls::Color color) {
        std::vector<int> cells;
        for (int cell = 0; cell < grid.geometry.cells(); ++cell) {
            if (grid(cell).BackColor == color) {
                cells.push_back(cell);
            }
        }
        return cells;
    }
    static std::vector<int> green(MapGrid& grid) { return cellsOf(grid, controls::kGreen); }

    static std::vector<int> valuesOf(const core::MapImage& image, int first, int count) {
        std::vector<int> values;
        for (int cell = first; cell < first + count; ++cell) {
            values.push_back(core::checked(image, cell));
        }
        return values;
    }

    BenchWindow window_;
};

class GridEditingTest : public EditingBench {
protected:
    GridEditingTest() : EditingBench(kOrdinaryMaps, &ordinaryInjectionScale, Pointing::Keys) {}
};

class LargeGridEditingTest : public EditingBench {
protected:
    LargeGridEditingTest() : EditingBench(kLargeMaps, &largeInjectionScale, Pointing::KeysAndMouse) {}
};

}  // namespace korvane::maps
