#include "maps/grid/FuelDisplay.h"

#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "maps/grid/MapConversions.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::maps {

FuelDisplay::FuelDisplay(MapGrid& fuel, controls::Window& window, const MapContext& context, InjectionScale scale,
                         float& injTimeScale, const controls::TextBox& injectionOffset)
    : MapDisplay(fuel, context, kFuelImages, Rewrite::Unlocked),
      window_(window),
      scale_(scale),
      injTimeScale_(injTimeScale),
      injectionOffset_(injectionOffset) {}

void FuelDisplay::updateScale() {
    injTimeScale_ = static_cast<float>(scale_(tables()));
}

void FuelDisplay::beforeCell() {
    window_.machine().pump.pump();
}

MapDisplay::Reading FuelDisplay::read(int cell, std::uint8_t count, std::string& toolTip) {
    const FuelModel model{tables().InjOff_type != 0, core::val(injectionOffset_.Text.get()), injTimeScale_,
                          tables().TickF};
    const double time = fuelTime(count, model);
    // Where the offset counts as map counts, the pulse is not compared with the time at the engine's speed.
    std::optional<Pulse> pulse;
    if (!model.offsetInCounts) {
        const double mode = core::parameterNumber(tables(), tables().addresses.INJ_MODE_OFFSET);
        pulse = Pulse{time, cycleTime(grid().geometry.rpmOf(cell)) / mode};
    }
    composeToolTip(cell, count, pulse, toolTip);
    return {time, pulse && pulse->available < pulse->length};
}

void FuelDisplay::composeToolTip(int cell, std::uint8_t count, const std::optional<Pulse>& pulse,
                                 std::string& toolTip) const {
    const float size = tables().NewInjectorSize;
    toolTip = ' ';
    toolTip += core::numberText(int{count}).view();
    if (const auto power =
            pulse ? CalcPower(static_cast<double>(size), pulse->length, pulse->available) : std::nullopt) {
        toolTip += core::numberText(*power).view();
    }
    toolTip += " hp (";
    toolTip += core::numberText(size).view();
    toolTip += "cc) ";
    toolTip += core::numberText(cell).view();
}

}  // namespace korvane::maps
