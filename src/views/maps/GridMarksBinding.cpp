#include "views/maps/GridMarksBinding.h"

#include <memory>

#include "maps/grid/Selection.h"
#include "views/frame/PartWatch.h"

namespace korvane::views {

namespace {

class GridMarksBinding : public BoundPart {
public:
    GridMarksBinding(Binder& binder, maps::MapGrid& grid, maps::GridLook& look, MapGridView& view)
        : grid_(grid), look_(look), view_(view), watch_(binder, *this) {
        watch_.add(grid);
        watch_.add(look);
    }

    void show() override {
        watch_.shown();
        view_.setBlock(maps::blockRange(grid_));
        view_.setEngineCell(grid_.EngineCell.get());
        view_.setAligned(look_.AlignNumbers);
        view_.setTinted(look_.HeatTint);
    }
    void showColorsAgain() override {}
    void detach(const ControlSet&) override { watch_.stop(); }

private:
    maps::MapGrid& grid_;
    maps::GridLook& look_;
    MapGridView& view_;
    PartWatch watch_;
};

}  // namespace

void bindMarks(Binder& binder, maps::MapGrid& grid, maps::GridLook& look, MapGridView& widget) {
    binder.bind(std::make_unique<GridMarksBinding>(binder, grid, look, widget), {}, widget);
}

}  // namespace korvane::views
