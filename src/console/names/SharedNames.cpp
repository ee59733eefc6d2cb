// The names of the shared tables and values; declared in Registry.h.
#include <functional>
#include <utility>

#include "console/ConsoleError.h"
#include "console/names/Register.h"
#include "console/names/Registry.h"

namespace korvane::console {

namespace {

void addIdentity(Names& names, core::SharedTables& tables) {
    addElements(names, "SWTypeNames()", tables.SWTypeNames, std::identity(), Access::ReadOnly);
    addVariable(names, "Features", tables.Features);
    addVariable(names, "HwVersion", tables.HwVersion);
    addVariable(names, "SWType", tables.SWType);
    addElements(names, "BitMask()", tables.BitMask, std::identity());
    for (const auto& [name, variable] :
         {std::pair{"TickA", &tables.TickA}, std::pair{"TickB", &tables.TickB}, std::pair{"TickC", &tables.TickC},
          std::pair{"TickD", &tables.TickD}, std::pair{"TickE", &tables.TickE}, std::pair{"TickF", &tables.TickF}}) {
        addVariable(names, name, *variable);
    }
    for (const auto& variable : core::parameterVariables()) {
        addVariable(names, std::string(variable.name), tables.addresses.*variable.member);
    }
}

// A row holds what a read of its width stores: a byte, or 32 bits where it is marked as 16 bits wide.
void assignParameter(core::EEParam& row, const Json& value) {
    if (value.isNull()) {
        row.value = std::monostate();
    } else if (value.asDouble() != nullptr) {
        row.value = singleNumber(value);
    } else if (row.is16bit) {
        row.value = wholeOf<std::int32_t>(value);
    } else {
        row.value = wholeOf<std::uint8_t>(value);
    }
}

void addEeprom(Names& names, core::SharedTables& tables) {
    auto& rows = tables.EEParams;
    names.add(
        "EEParams().value", {{0, static_cast<int>(rows.size()) - 1}},
        [&rows](Names::Indices at) { return toJson(rows[static_cast<std::size_t>(at.front())].value); },
        [&rows](Names::Indices at, const Json& value) {
            assignParameter(rows[static_cast<std::size_t>(at.front())], value);
        });
    addElements(names, "EEParams().name", rows, &core::EEParam::name, Access::ReadOnly);
    addElements(names, "EEParams().reserved", rows, &core::EEParam::reserved, Access::ReadOnly);
    addElements(names, "EEParams().is16bit", rows, &core::EEParam::is16bit);
    addElements(names, "EEImage()", tables.EEImage, std::identity());
    addElements(names, "EETime()", tables.EETime, std::identity());
}

void addMaps(Names& names, core::SharedTables& tables) {
    for (const auto& [name, map] :
         {std::pair{"FuelMapIn()", &tables.FuelMapIn}, std::pair{"FuelMapOut()", &tables.FuelMapOut},
          std::pair{"IgnMapIn()", &tables.IgnMapIn}, std::pair{"IgnMapOut()", &tables.IgnMapOut},
          std::pair{"PwmMapIn()", &tables.PwmMapIn}, std::pair{"PwmMapOut()", &tables.PwmMapOut}}) {
        addElements(names, name, *map, std::identity());
    }
    addElements(names, "MiscBlock()", tables.MiscBlock, std::identity());
    addVariable(names, "FuelSendAcks", tables.FuelSendAcks);
    addVariable(names, "IgnSendAcks", tables.IgnSendAcks);
}

void addLiveData(Names& names, core::SharedTables& tables) {
    using core::LiveValue;
    addElements(names, "liveValues().name", tables.liveValues, &LiveValue::name);
    addElements(names, "liveValues().description", tables.liveValues, &LiveValue::description);
    addElements(names, "liveValues().limit", tables.liveValues, &LiveValue::limit);
    addElements(names, "liveValues().gain", tables.liveValues, &LiveValue::gain);
    addElements(names, "liveValues().offset", tables.liveValues, &LiveValue::offset);
    addElements(names, "liveValues().value", tables.liveValues, &LiveValue::value);
    addElements(names, "liveValues().raw", tables.liveValues, &LiveValue::raw);
    addVariable(names, "IdlePidWord", tables.IdlePidWord);
    addVariable(names, "BoostPidWord", tables.BoostPidWord);
    addVariable(names, "AccelWord", tables.AccelWord);
    addVariable(names, "MapPlace", tables.MapPlace);
    addVariable(names, "PrevMapPlace", tables.PrevMapPlace);
    addVariable(names, "ThrottleMin", tables.ThrottleMin);
    addVariable(names, "ThrottleMax", tables.ThrottleMax);
}

void addDatalog(Names& names, core::SharedTables& tables) {
    using core::LogTable;
    names.add(
        "logData()", {{0, LogTable::kColumns - 1}, {0, LogTable::kRows - 1}},
        [&tables](Names::Indices at) { return Json(tables.logData.cell(at[0], at[1])); },
        [&tables](Names::Indices at, const Json& value) { tables.logData.set(at[0], at[1], text(value)); });
    addVariable(names, "logDataCount", tables.logDataCount);
}

void addPreferences(Names& names, core::SharedTables& tables) {
    addVariable(names, "useSound", tables.useSound);
    addVariable(names, "InjOff_type", tables.InjOff_type);
    addVariable(names, "Inj8ms_mode", tables.Inj8ms_mode);
    addVariable(names, "OldInjectorSize", tables.OldInjectorSize);
    addVariable(names, "NewInjectorSize", tables.NewInjectorSize);
    addVariable(names, "ignWindowOpen", tables.ignWindowOpen);
    addVariable(names, "SaveFileName", tables.SaveFileName);
    addVariable(names, "LoadFileName", tables.LoadFileName);
}

}  // namespace

void registerSharedTables(Names& names, core::SharedTables& tables) {
    addIdentity(names, tables);
    addEeprom(names, tables);
    addMaps(names, tables);
    addLiveData(names, tables);
    addDatalog(names, tables);
    addPreferences(names, tables);
}

}  // namespace korvane::console
