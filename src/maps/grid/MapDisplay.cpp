#include "maps/grid/MapDisplay.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"

namespace korvane::maps {

void MapDisplay::show(const core::MapImage& image, Rewrite rewrite) {
    beforeMap();
    for (int cell = 0; cell < grid_.geometry.cells(); ++cell) {
        beforeCell();
        showCell(cell, core::checked(image, cell), rewrite);
    }
    grid_.fill.NeverRead = false;
    context_.frm3Dmap.Update3D(images_.number);
}

void MapDisplay::showCell(int cell, std::uint8_t count, Rewrite rewrite) {
    const auto imageByte = [&](auto image) { return core::checked(tables().*image, cell); };
    toolTip_ = core::numberText(int{count}).view();
    composeToolTip(cell, count, toolTip_);
    const auto [number, tooLong] = readingOf(cell, count);
    const auto color = tooLong ? controls::kRed : editColor(imageByte(images_.received), imageByte(images_.edited));
    showFace(grid_(cell), {color, core::numberText(number).view(), toolTip_}, rewrite);
}

}  // namespace korvane::maps
