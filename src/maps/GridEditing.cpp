#include "maps/GridEditing.h"

#include <optional>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/EditRules.h"
#include "maps/Frm3Dmap.h"
#include "maps/MiscBoxes.h"

namespace korvane::maps {

namespace {

constexpr std::uint8_t kFuelChange = 'g';
constexpr std::uint8_t kIgnitionChange = 'i';

}  // namespace

GridEditing::GridEditing(MapControls& window, const MapContext& context, MapDisplay& display, IgnitionMouse mouse)
    : window_(window),
      context_(context),
      display_(display),
      realtime_(window.chkOnlineChanges, context.connection.MSComm1),
      fuel_(window, window.fuel, context.tables, rulesOfFuel()),
      ign_(window, window.ign, context.tables, rulesOfIgn(mouse)),
      pwm_(window, window.pwm, context.tables, rulesOfPwm()) {
    describeMiscBoxes(window.txtMisc);
}

GridRules GridEditing::rulesOfFuel() {
    auto rules = fuelRules([this]() -> std::optional<double> {
        const bool inCounts = context_.tables.InjOff_type != 0;
        return inCounts ? std::optional(core::val(window_.txtMisc(kInjectionOffset).Text.get())) : std::nullopt;
    });
    rules.redraw = [this] { display_.populateFuelOUT(); };
    rules.redrawCell = [this](int) { display_.populateFuelOUT(); };
    rules.cellEdited = [this](int cell) {
        realtime_.send(kFuelChange, cell, core::checked(context_.tables.FuelMapOut, cell));
    };
    return rules;
}

GridRules GridEditing::rulesOfIgn(IgnitionMouse mouse) {
    auto rules = ignitionRules(mouse == IgnitionMouse::Yes);
    rules.redraw = [this] { display_.populateIGNOUT(); };
    rules.redrawCell = [this](int) { display_.populateIGNOUT(); };
    rules.cellEdited = [this](int cell) {
        realtime_.send(kIgnitionChange, cell, core::checked(context_.tables.IgnMapOut, cell));
    };
    return rules;
}

// PWM values reach the ECU by their own button only.
GridRules GridEditing::rulesOfPwm() {
    auto rules = pwmRules();
    rules.redraw = [this] { display_.populatePWMOUT(); };
    rules.redrawCell = [this](int cell) { showPwmStep(cell); };
    return rules;
}

void GridEditing::showPwmStep(int cell) {
    const double time = core::checked(context_.tables.PwmMapOut, cell) * context_.tables.TickD;
    window_.pwm(cell).Text = core::numberText(core::toCurrency(time)).view();
    context_.frm3Dmap.Update3D(kPwmTable);
}

}  // namespace korvane::maps
