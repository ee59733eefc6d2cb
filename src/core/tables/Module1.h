// Start-up of the shared tables, and what a new firmware identity changes in them.
#pragma once

#include "core/files/ChannelFile.h"
#include "platform/PreferencesStore.h"

namespace korvane::core {

struct FirmwareIdentity;
struct SharedTables;

// Everything that the tables hold before the first reply of the ECU. Called once, when the main window loads.
void InitModule(SharedTables& tables, const platform::PreferencesStore& preferences);

// The parameter layout of a firmware type, kept in row 3000 as well: the addresses, and the names and marks of the
// rows. Values, images and times stay. Called at the start with 0 and for each identity that names a type.
void InitParams(SharedTables& tables, std::int32_t swType);

// Firmware types whose maps have 320 cells.
[[nodiscard]] constexpr bool hasLargeMaps(std::int32_t swType) {
    return swType == 14 || swType == 15 || swType == 213;
}

// Those that have no fuel and no PWM map, and the one that has no map.
[[nodiscard]] constexpr bool ignitesOnly(std::int32_t swType) {
    return swType == 30 || swType == 32;
}
[[nodiscard]] constexpr bool limitsOnly(std::int32_t swType) {
    return swType == 112;
}

// TickA to TickF.
void InitTimeUnits(FirmwareIdentity& tables);

}  // namespace korvane::core
