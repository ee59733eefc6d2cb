#include "maps/panes/FuelPane.h"

#include <array>
#include <optional>

#include "core/Numbers.h"
#include "maps/FrmInjScale.h"
#include "maps/grid/EditRules.h"

namespace korvane::maps {

namespace {

constexpr WholeMap kFuelMap{
    .names = {{"FrameFuel", "Fuel [ms]"},
              {"txtFuel", "lblRpmF", "lblMapF"},
              {"btnReadFuel", "Read Fuel Values"},
              {"btnWriteFuel", "Send Fuel Values"},
              {"Fuel", "fuel", "ms"}},
    .images = kFuelImages,
    .commands = link::kFuelMap,
    .writer = MapWriter::kFuel,
    .featureBit = kInjectionBit,
    .loadFailure = "Virhe fuel kartassa",
};

controls::Value scaleOf(const controls::Object& object) {
    return core::val(core::textOf(dynamic_cast<const FuelPane&>(object).InjTimeScale));
}

constexpr std::array kProperties{controls::readOnlyProperty<&scaleOf>("InjTimeScale")};

// The injection offset counts as map counts or as time.
CountOffset countOffset(const core::SharedTables& tables, const controls::TextBox& injectionOffset) {
    return [&]() -> std::optional<double> {
        const bool inCounts = tables.InjOff_type != 0;
        return inCounts ? std::optional(core::val(injectionOffset.Text.get())) : std::nullopt;
    };
}

}  // namespace

FuelPane::FuelPane(PaneWindow& window, InjectionScale scale, Halves halves, const controls::TextBox& injectionOffset)
    : WholeMapPane(window, kFuelMap, halves, fuelRules(countOffset(window.context().tables, injectionOffset))),
      btnInjScale(window, "btnInjScale"),
      display_(fuel, window, window.context(), scale, InjTimeScale, injectionOffset) {
    btnInjScale.Caption = "Injector scaling";
    btnInjScale.Click = [this] { paneWindow().context().frmInjScale.show(); };
}

void FuelPane::tickPane() {
    WholeMapPane::tickPane();
    const bool isShown = !fuel.fill.NeverRead;
    paneWindow().sizeNote.Scale = isShown ? scaleNote(InjTimeScale, display_.scaleNow()) : std::string();
}

std::span<const controls::PropertyInfo> FuelPane::fuelProperties() {
    return kProperties;
}

}  // namespace korvane::maps
