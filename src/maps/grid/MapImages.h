// One of the three maps in the shared tables.
#pragma once

#include <cstdint>

#include "core/Overwritten.h"
#include "core/history/MapStep.h"
#include "core/tables/SharedTables.h"
#include "link/EcuMap.h"
#include "maps/Frm3Dmap.h"

namespace korvane::maps {

struct MapImages {
    core::MapImage core::SharedTables::*received;
    core::MapImage core::SharedTables::*edited;
    link::EcuMap link::EcuMaps::*inEcu;
    core::EditedMap inHistory;
    std::int32_t number;  // as Update3D takes it
    core::Overwritten::Part part;
    // The cells that a write sends.
    int firstSent = 0;
    int lastSent = static_cast<int>(core::kMapSize) - 1;
    int firstKept = 0;  // of those that the ECU stores
};

inline constexpr MapImages kFuelImages{&core::SharedTables::FuelMapIn,
                                       &core::SharedTables::FuelMapOut,
                                       &link::EcuMaps::fuel,
                                       core::EditedMap::Fuel,
                                       kFuelTable,
                                       core::Overwritten::Part::Fuel};
inline constexpr MapImages kIgnitionImages{&core::SharedTables::IgnMapIn,
                                           &core::SharedTables::IgnMapOut,
                                           &link::EcuMaps::ignition,
                                           core::EditedMap::Ignition,
                                           kIgnitionTable,
                                           core::Overwritten::Part::Ignition};
// Three cells that are disabled in the grid are sent too.
inline constexpr MapImages kPwmImages{&core::SharedTables::PwmMapIn,
                                      &core::SharedTables::PwmMapOut,
                                      &link::EcuMaps::pwm,
                                      core::EditedMap::Pwm,
                                      kPwmTable,
                                      core::Overwritten::Part::Pwm,
                                      61,
                                      159,
                                      link::EcuMaps::kFirstKeptPwm};

}  // namespace korvane::maps
