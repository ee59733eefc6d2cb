// A parameter of the PC's shadow of the EEPROM as a number.
#pragma once

#include <type_traits>
#include <variant>

#include "core/Checked.h"
#include "core/tables/EepromShadow.h"

namespace korvane::core {

// 0 for a parameter that has not been read. RuntimeError 9 for an address outside the table.
[[nodiscard]] inline double parameterNumber(const EepromShadow& tables, int address) {
    return std::visit(
        [](auto value) {
            if constexpr (std::is_same_v<decltype(value), std::monostate>) {
                return 0.0;
            } else {
                return static_cast<double>(value);
            }
        },
        checked(tables.EEParams, address).value);
}

}  // namespace korvane::core
