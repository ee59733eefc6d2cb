#include "maps/MapDisplay.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "maps/Frm3Dmap.h"
#include "maps/MapConversions.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr double kPwmPulsesPerCycle = 4.0;

FuelModel fuelModel(MapControls& window, const core::SharedTables& tables) {
    return {tables.InjOff_type != 0, core::val(window.txtMisc(kInjectionOffset).Text.get()), window.InjTimeScale,
            tables.TickF};
}

}  // namespace

MapDisplay::MapDisplay(MapControls& window, const MapContext& context, InjectionScale scale)
    : window_(window), context_(context), scale_(scale), ignition_(window.ign, context.tables, context.frm3Dmap) {}

void MapDisplay::updateScale() {
    window_.InjTimeScale = static_cast<float>(scale_(context_.tables));
}

void MapDisplay::showFuel(const core::MapImage& image, Rewrite rewrite) {
    updateScale();
    for (int cell = 0; cell < window_.fuel.geometry.cells(); ++cell) {
        window_.machine().pump.pump();
        showFuelCell(cell, core::checked(image, cell), rewrite);
    }
    context_.frm3Dmap.Update3D(kFuelTable);
}

void MapDisplay::showFuelCell(int cell, std::uint8_t count, Rewrite rewrite) {
    const auto& tables = context_.tables;
    const FuelModel model = fuelModel(window_, tables);
    const double time = fuelTime(count, model);
    // Where the offset counts as map counts no pulse is set against the engine's speed.
    std::optional<Pulse> pulse;
    if (!model.offsetInCounts) {
        const double mode = core::parameterNumber(tables, tables.addresses.INJ_MODE_OFFSET);
        pulse = Pulse{time, cycleTime(window_.fuel.geometry.rpmOf(cell)) / mode};
    }
    const auto edited = editColor(core::checked(tables.FuelMapIn, cell), core::checked(tables.FuelMapOut, cell));
    const auto color = pulse && pulse->available < pulse->length ? controls::kRed : edited;
    composeFuelToolTip(cell, count, pulse);
    showFace(window_.fuel(cell), {color, core::numberText(time).view(), toolTip_}, rewrite);
}

void MapDisplay::composeFuelToolTip(int cell, std::uint8_t count, const std::optional<Pulse>& pulse) {
    const float size = context_.tables.NewInjectorSize;
    toolTip_ = ' ';
    toolTip_ += core::numberText(int{count}).view();
    if (const auto power =
            pulse ? CalcPower(static_cast<double>(size), pulse->length, pulse->available) : std::nullopt) {
        toolTip_ += core::numberText(*power).view();
    }
    toolTip_ += " hp (";
    toolTip_ += core::numberText(size).view();
    toolTip_ += "cc) ";
    toolTip_ += core::numberText(cell).view();
}

void MapDisplay::showPwm(const core::MapImage& image) {
    const auto& tables = context_.tables;
    auto& grid = window_.pwm;
    for (int cell = 0; cell < grid.geometry.cells(); ++cell) {
        const std::uint8_t count = core::checked(image, cell);
        const double time = pwmTime(count, tables.TickD);
        const bool tooLong = cycleTime(grid.geometry.rpmOf(cell)) / kPwmPulsesPerCycle < time;
        const auto edited = editColor(core::checked(tables.PwmMapIn, cell), core::checked(tables.PwmMapOut, cell));
        const auto text = core::numberText(time);
        const auto toolTip = core::numberText(int{count});
        showFace(grid(cell), {tooLong ? controls::kRed : edited, text.view(), toolTip.view()}, Rewrite::Locked);
    }
    context_.frm3Dmap.Update3D(kPwmTable);
}

}  // namespace korvane::maps
