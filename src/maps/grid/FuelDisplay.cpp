#include "maps/grid/FuelDisplay.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/MapConversions.h"
#include "maps/panes/FuelPane.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::maps {

FuelDisplay::FuelDisplay(FuelPane& pane, controls::Window& window, const MapContext& context, InjectionScale scale,
                         const controls::TextBox& injectionOffset)
    : pane_(pane), window_(window), context_(context), scale_(scale), injectionOffset_(injectionOffset) {}

void FuelDisplay::updateScale() {
    pane_.InjTimeScale = static_cast<float>(scale_(context_.tables));
}

void FuelDisplay::show(const core::MapImage& image, Rewrite rewrite) {
    updateScale();
    for (int cell = 0; cell < pane_.fuel.geometry.cells(); ++cell) {
        window_.machine().pump.pump();
        showCell(cell, core::checked(image, cell), rewrite);
    }
    context_.frm3Dmap.Update3D(kFuelTable);
}

void FuelDisplay::showCell(int cell, std::uint8_t count, Rewrite rewrite) {
    const auto& tables = context_.tables;
    const FuelModel model{tables.InjOff_type != 0, core::val(injectionOffset_.Text.get()), pane_.InjTimeScale,
                          tables.TickF};
    const double time = fuelTime(count, model);
    // Where the offset counts as map counts no pulse is set against the engine's speed.
    std::optional<Pulse> pulse;
    if (!model.offsetInCounts) {
        const double mode = core::parameterNumber(tables, tables.addresses.INJ_MODE_OFFSET);
        pulse = Pulse{time, cycleTime(pane_.fuel.geometry.rpmOf(cell)) / mode};
    }
    const auto edited = editColor(core::checked(tables.FuelMapIn, cell), core::checked(tables.FuelMapOut, cell));
    const auto color = pulse && pulse->available < pulse->length ? controls::kRed : edited;
    composeToolTip(cell, count, pulse);
    showFace(pane_.fuel(cell), {color, core::numberText(time).view(), toolTip_}, rewrite);
}

void FuelDisplay::composeToolTip(int cell, std::uint8_t count, const std::optional<Pulse>& pulse) {
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

}  // namespace korvane::maps
