// The PC's shadow of the ECU's EEPROM.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <variant>

#include "core/tables/Members.h"

namespace korvane::core {

inline constexpr std::size_t kEepromSize = 3001;  // addresses 0 to 3000; the last two are no cells of the ECU

// A parameter's last known value, empty until read. A byte from a byte read, 32 bits from a word read; the rows of the
// firmware version and type hold a float and 32 bits.
using ParameterValue = std::variant<std::monostate, std::uint8_t, std::int32_t, float>;

// One row of the shadow; its index is the address.
struct EEParam {
    ParameterValue value;
    std::string name;           // empty for an address with no name
    std::int32_t reserved = 0;  // always 0; a column of settings files
    bool is16bit = false;       // stored low byte first here and at the next address; written as two bytes
};

struct EepromShadow {
    std::array<EEParam, kEepromSize> EEParams;
    std::array<std::uint8_t, kEepromSize> EEImage{};  // bytes as last read
    std::array<std::string, kEepromSize> EETime;      // when they were read, "hh:mm:ss"
};

template <>
inline constexpr auto kMembers<EEParam> =
    std::tuple{Member{"value", &EEParam::value}, Member{"name", &EEParam::name, Access::ReadOnly},
               Member{"reserved", &EEParam::reserved, Access::ReadOnly}, Member{"is16bit", &EEParam::is16bit}};

template <>
inline constexpr auto kMembers<EepromShadow> =
    std::tuple{Member{"EEParams", &EepromShadow::EEParams}, Member{"EEImage", &EepromShadow::EEImage},
               Member{"EETime", &EepromShadow::EETime}};

}  // namespace korvane::core
