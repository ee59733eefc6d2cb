#include "views/maps/GridMarksBinding.h"

#include "maps/grid/Selection.h"
#include "views/frame/ObjectPart.h"

namespace korvane::views {

void bindMarks(Binder& binder, maps::MapGrid& grid, maps::GridLook& look, MapGridView& widget) {
    ObjectPart::bind(binder, {&grid, &grid.fill, &look}, [&grid, &look, &widget] {
        widget.setBlock(maps::blockRange(grid));
        widget.setEngineCell(grid.EngineCell.get());
        widget.setUnread(grid.fill.Unread);
        widget.setAligned(look.AlignNumbers);
        widget.setTinted(look.HeatTint);
    });
}

}  // namespace korvane::views
