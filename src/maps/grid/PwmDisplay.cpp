#include "maps/grid/PwmDisplay.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/CellFace.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

namespace {
constexpr double kPulsesPerCycle = 4.0;
}

void PwmDisplay::show(const core::MapImage& image) {
    for (int cell = 0; cell < grid_.geometry.cells(); ++cell) {
        const std::uint8_t count = core::checked(image, cell);
        const double time = pwmTime(count, tables_.TickD);
        const bool tooLong = cycleTime(grid_.geometry.rpmOf(cell)) / kPulsesPerCycle < time;
        const auto edited = editColor(core::checked(tables_.PwmMapIn, cell), core::checked(tables_.PwmMapOut, cell));
        const auto text = core::numberText(time);
        const auto toolTip = core::numberText(int{count});
        showFace(grid_(cell), {tooLong ? controls::kRed : edited, text.view(), toolTip.view()}, Rewrite::Locked);
    }
    frm3Dmap_.Update3D(kPwmTable);
}

}  // namespace korvane::maps
