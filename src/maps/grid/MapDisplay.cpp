#include "maps/grid/MapDisplay.h"

#include <algorithm>

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
    noteFill();
    context_.frm3Dmap.Update3D(images_.number);
}

void MapDisplay::noteFill() {
    grid_.fill.NeverRead = false;
    grid_.fill.Unread = unreadCells();
    context_.frm3Dmap.unreadIn(images_.number, grid_.fill.Unread);
}

// A loaded tune has all cells; of a map of which the ECU has told a part the rest is unread.
std::vector<bool> MapDisplay::unreadCells() const {
    const auto& ecu = context_.connection.ecuMaps.*images_.inEcu;
    const auto isTold = [&](int cell) { return ecu.working(static_cast<std::size_t>(cell)).has_value(); };
    const auto isEmpty = [&](int cell) {
        return core::checked(tables().*images_.received, cell) == 0 &&
               core::checked(tables().*images_.edited, cell) == 0;
    };
    std::vector<bool> unread;
    bool anyTold = false;
    for (int cell = 0; cell < grid_.geometry.cells(); ++cell) {
        anyTold = anyTold || isTold(cell);
        unread.push_back(!isTold(cell) && isEmpty(cell));
    }
    const bool all = std::find(unread.begin(), unread.end(), true) == unread.end();
    return all || (received_ && !anyTold) ? std::vector<bool>() : unread;
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
