// What the program knows of the firmware at the other end of the line, and what follows from it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <tuple>

#include "core/ParameterAddresses.h"
#include "core/tables/Members.h"

namespace korvane::core {

inline constexpr float kAssumedHwVersion = 3.1F;  // until the ECU has named its own

struct FirmwareIdentity {
    std::array<std::string, 256> SWTypeNames;  // by type; "-" for a type that is unknown
    std::int32_t Features = -1;                // feature word; -1 enables everything until the ECU has answered
    float HwVersion = kAssumedHwVersion;
    std::int32_t SWType = 0;
    ParameterAddresses addresses;

    std::array<std::uint16_t, 16> BitMask{};  // 2 to the index

    // Milliseconds for one count of the ECU's timers, which derive from its clock of 18.432 MHz.
    double TickA = 0.0;
    double TickB = 0.0;
    double TickC = 0.0;
    double TickD = 0.0;  // of injection times
    double TickE = 0.0;
    double TickF = 0.0;
};

template <>
inline constexpr auto kMembers<FirmwareIdentity> =
    std::tuple{Member{"SWTypeNames", &FirmwareIdentity::SWTypeNames, Access::ReadOnly},
               Member{"Features", &FirmwareIdentity::Features},
               Member{"HwVersion", &FirmwareIdentity::HwVersion},
               Member{"SWType", &FirmwareIdentity::SWType},
               Member{"addresses", &FirmwareIdentity::addresses},
               Member{"BitMask", &FirmwareIdentity::BitMask},
               Member{"TickA", &FirmwareIdentity::TickA},
               Member{"TickB", &FirmwareIdentity::TickB},
               Member{"TickC", &FirmwareIdentity::TickC},
               Member{"TickD", &FirmwareIdentity::TickD},
               Member{"TickE", &FirmwareIdentity::TickE},
               Member{"TickF", &FirmwareIdentity::TickF}};

}  // namespace korvane::core
