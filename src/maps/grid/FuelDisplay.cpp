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

float FuelDisplay::scaleNow() const {
    const bool large = grid().geometry.cells() == kLargeMaps.cells();
    return static_cast<float>(large ? largeScaleNow(tables()) : ordinaryScaleNow(tables()));
}

void FuelDisplay::beforeCell() {
    window_.machine().pump.pump();
}

FuelDisplay::Pulse FuelDisplay::pulseOf(int cell, std::uint8_t count) const {
    const auto model = fuelModelOf(tables(), core::val(injectionOffset_.Text.get()), injTimeScale_);
    const double time = fuelTime(count, model);
    if (model.offsetInCounts) {
        return {time, std::nullopt};
    }
    const double mode = core::parameterNumber(tables(), tables().addresses.INJ_MODE_OFFSET);
    return {time, cycleTime(grid().geometry.rpmOf(cell)) / mode};
}

MapDisplay::Reading FuelDisplay::readingOf(int cell, std::uint8_t count) const {
    const auto [length, available] = pulseOf(cell, count);
    return {length, available && *available < length};
}

std::optional<double> FuelDisplay::powerOf(int cell, std::uint8_t count) const {
    const auto [length, available] = pulseOf(cell, count);
    const auto size = static_cast<double>(tables().NewInjectorSize);
    return available ? CalcPower(size, length, *available) : std::nullopt;
}

void FuelDisplay::composeToolTip(int cell, std::uint8_t count, std::string& toolTip) const {
    toolTip = ' ';
    toolTip += core::numberText(int{count}).view();
    if (const auto power = powerOf(cell, count)) {
        toolTip += core::numberText(*power).view();
    }
    toolTip += " hp (";
    toolTip += core::numberText(tables().NewInjectorSize).view();
    toolTip += "cc) ";
    toolTip += core::numberText(cell).view();
}

}  // namespace korvane::maps
