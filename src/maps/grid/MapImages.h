// One of the three maps in the shared tables.
#pragma once

#include <cstdint>

#include "core/tables/SharedTables.h"
#include "maps/Frm3Dmap.h"

namespace korvane::maps {

struct MapImages {
    core::MapImage core::SharedTables::*received;
    core::MapImage core::SharedTables::*edited;
    std::int32_t number;  // as Update3D takes it
};

inline constexpr MapImages kFuelImages{&core::SharedTables::FuelMapIn, &core::SharedTables::FuelMapOut, kFuelTable};
inline constexpr MapImages kIgnitionImages{&core::SharedTables::IgnMapIn, &core::SharedTables::IgnMapOut,
                                           kIgnitionTable};
inline constexpr MapImages kPwmImages{&core::SharedTables::PwmMapIn, &core::SharedTables::PwmMapOut, kPwmTable};

}  // namespace korvane::maps
