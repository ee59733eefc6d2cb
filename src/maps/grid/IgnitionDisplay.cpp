#include "maps/grid/IgnitionDisplay.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

void IgnitionDisplay::show(const core::MapImage& image, Rewrite rewrite) {
    for (int cell = 0; cell < grid_.geometry.cells(); ++cell) {
        const std::uint8_t count = core::checked(image, cell);
        const auto color = editColor(core::checked(tables_.IgnMapIn, cell), core::checked(tables_.IgnMapOut, cell));
        const auto text = core::numberText(ignitionDegrees(count));
        const auto toolTip = core::numberText(int{count});
        showFace(grid_(cell), {color, text.view(), toolTip.view()}, rewrite);
    }
    frm3Dmap_.Update3D(kIgnitionTable);
}

}  // namespace korvane::maps
