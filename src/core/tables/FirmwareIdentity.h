// What the program knows of the firmware at the other end of the line, and what follows from it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/ParameterAddresses.h"

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

}  // namespace korvane::core
