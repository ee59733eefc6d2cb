// What an ECU has, stored and in its working memory, and how that compares with what it had before and should have.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string_view>

#include "ecu/VirtualEcu.h"
#include "ecu/memory/EepromFile.h"

namespace korvane::proof {

struct EcuState {
    struct Working {
        ecu::MapCells fuel{}, ignition{}, pwm{};
        ecu::MiscBytes misc{};

        friend bool operator==(const Working&, const Working&) = default;
    };

    std::array<std::uint8_t, ecu::kEepromCells> stored{};
    Working working;         // what the engine runs on
    Working afterRestart{};  // what it would run on
};

[[nodiscard]] EcuState stateOf(const ecu::VirtualEcu& ecu);

enum class Outcome {
    Old,        // all is as it was
    New,        // all is as it should be
    NotStored,  // the EEPROM is old or new, and the engine runs on something else until the next restart
    Mixed,      // some cells of the operation are old, some new, or one is neither
    Elsewhere,  // a cell that the operation does not write has changed
};
inline constexpr int kOutcomes = 5;
[[nodiscard]] std::string_view nameOf(Outcome outcome);

// `written` are the cells that the operation writes, of which some may have had their values before.
using CellSet = std::bitset<ecu::kEepromCells>;
[[nodiscard]] Outcome outcomeOf(const EcuState& before, const EcuState& wanted, const CellSet& written,
                                const EcuState& now);

}  // namespace korvane::proof
