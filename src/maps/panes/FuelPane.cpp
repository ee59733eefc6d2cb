#include "maps/panes/FuelPane.h"

#include <array>
#include <optional>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/FrmInjScale.h"
#include "maps/grid/EditRules.h"

namespace korvane::maps {

namespace {

constexpr auto kRead = link::kAskFuelMap;
constexpr auto kChange = link::kChangeFuelCell;

controls::Value scaleOf(const controls::Object& object) {
    return core::val(core::textOf(dynamic_cast<const FuelPane&>(object).InjTimeScale));
}

constexpr std::array kProperties{controls::readOnlyProperty<&scaleOf>("InjTimeScale")};

}  // namespace

FuelPane::FuelPane(PaneWindow& window, InjectionScale scale, Halves halves, const controls::TextBox& injectionOffset)
    : MapPane(window),
      FrameFuel(window, "FrameFuel"),
      fuel(window, {"txtFuel", "lblRpmF", "lblMapF"}, window.geometry, FrameFuel),
      btnReadFuel(window, "btnReadFuel"),
      btnWriteFuel(window, "btnWriteFuel"),
      btnInjScale(window, "btnInjScale"),
      display_(*this, window, window.context(), scale, injectionOffset),
      realtime_(window.chkOnlineChanges, window.context().connection.MSComm1),
      editor_(window, fuel, window.context().tables, rules(injectionOffset)),
      writer_(window, MapWriter::kFuel, halves) {
    FrameFuel.Caption = "Fuel [ms]";
    btnReadFuel.Caption = "Read Fuel Values";
    btnReadFuel.Click = [&window] { window.line().request(kRead); };
    btnWriteFuel.Caption = "Send Fuel Values";
    btnWriteFuel.Click = [this] { writer_.write(); };
    btnInjScale.Caption = "Injector scaling";
    btnInjScale.Click = [this] { paneWindow().context().frmInjScale.show(); };
}

std::span<const controls::PropertyInfo> FuelPane::fuelProperties() {
    return kProperties;
}

// The injection offset counts as map counts or as time.
GridRules FuelPane::rules(const controls::TextBox& injectionOffset) {
    auto& tables = paneWindow().context().tables;
    auto rules = fuelRules([&tables, &injectionOffset]() -> std::optional<double> {
        const bool inCounts = tables.InjOff_type != 0;
        return inCounts ? std::optional(core::val(injectionOffset.Text.get())) : std::nullopt;
    });
    rules.redraw = [this] { populateFuelOUT(); };
    rules.redrawCell = [this](int) { populateFuelOUT(); };
    rules.cellEdited = [this, &tables](int cell) {
        realtime_.send(kChange, cell, core::checked(tables.FuelMapOut, cell));
    };
    return rules;
}

void FuelPane::loadPane(std::int32_t features) {
    fuel.place();
    btnReadFuel.Enabled = btnWriteFuel.Enabled = (features & kInjectionBit) != 0;
}

void FuelPane::readPane() {
    paneWindow().line().requestFirst(kRead);
}

// Others call these past the window's door, and events run in them.
void FuelPane::populateFuel() {
    const controls::Window::Stay stay(paneWindow());
    display_.populateFuel();
}

void FuelPane::populateFuelOUT() {
    const controls::Window::Stay stay(paneWindow());
    display_.populateFuelOUT();
}

void FuelPane::showLoadedTune() {
    paneWindow().toldAs("Virhe fuel kartassa", [this] { populateFuel(); });
}

void FuelPane::acceptLoadedTune(bool) {
    auto& tables = paneWindow().context().tables;
    tables.FuelMapOut = tables.FuelMapIn;
}

}  // namespace korvane::maps
