#include "core/tables/Module1.h"

#include "core/Checked.h"
#include "core/ParameterNames.h"
#include "core/tables/ModuleReg.h"
#include "core/tables/SharedTables.h"

namespace korvane::core {

namespace {

struct TypeName {
    std::size_t type;
    std::string_view name;
};

// Types 10 and 11 carry the same text on purpose.
constexpr std::array kTypeNames = {
    TypeName{10, "Korvane3 full engine control"},
    TypeName{11, "Korvane3 full engine control"},
    TypeName{12, "Korvane3 full engine control 6cyl Nissan"},
    TypeName{13, "Korvane3 full engine control 6cyl TKR"},
    TypeName{14, "Korvane3 full engine control 6cyl, Nissan, Large"},
    TypeName{15, "Korvane3 full engine control 4cyl, TKR, Large"},
    TypeName{20, "Mirel Injection, full"},
    TypeName{21, "Mirel Injection, full v3.3"},
    TypeName{30, "Mirel Ignition"},
    TypeName{31, "Mirel Ignition, full"},
    TypeName{32, "Mirel Ignition, QV"},
    TypeName{112, "KorvaneMirel, Advanced Ignition limiter"},
    TypeName{210, "KorvaneMirel, Mirel Engine controls; 60deg trig"},
    TypeName{211, "KorvaneMirel, Mirel Engine controls; TKR trig"},
    TypeName{212, "KorvaneMirel, Mirel Engine controls; Nissan"},
    TypeName{213, "KorvaneMirel, Mirel Engine controls; Nissan, Large"},
};

constexpr std::string_view kUnknownType = "-";
constexpr double kClockHz = 18432000.0;

void fillTypeNames(FirmwareIdentity& tables) {
    tables.SWTypeNames.fill(std::string(kUnknownType));
    for (const TypeName& entry : kTypeNames) {
        checked(tables.SWTypeNames, entry.type) = entry.name;
    }
}

void fillBitMask(FirmwareIdentity& tables) {
    std::uint32_t bit = 1;
    for (std::uint16_t& mask : tables.BitMask) {
        mask = static_cast<std::uint16_t>(bit);
        bit *= 2;
    }
}

}  // namespace

void InitModule(SharedTables& tables, const platform::PreferencesStore& preferences) {
    tables.InjOff_type = RegReadNumber(preferences, kSettingsKey, "InjOff_type");
    tables.Inj8ms_mode = RegReadNumber(preferences, kSettingsKey, "Inj8ms_mode");
    fillBitMask(tables);
    tables.Features = -1;
    fillTypeNames(tables);
    InitParams(tables, 0);
}

void InitParams(SharedTables& tables, std::int32_t swType) {
    tables.addresses = parameterAddresses(swType);
    checked(tables.EEParams, tables.addresses.SW_TYPE).value = swType;
    for (const ParameterName& parameter : parameterNames()) {
        EEParam& row = checked(tables.EEParams, parameter.address);
        row.name = parameter.name;
        row.is16bit = parameter.is16bit;
    }
}

void InitTimeUnits(FirmwareIdentity& tables) {
    tables.TickA = 1014000.0 / kClockHz;
    tables.TickB = 512000.0 / kClockHz;
    tables.TickC = 768000.0 / kClockHz;
    tables.TickD = 256000.0 / kClockHz;
    tables.TickE = 128000.0 / kClockHz;
    tables.TickF = tables.TickE / 2.0;
}

}  // namespace korvane::core
