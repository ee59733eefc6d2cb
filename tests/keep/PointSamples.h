// Restore points for tests.
#pragma once

#include "keep/point/Snapshot.h"

namespace korvane::keep {

// Every cell is known, in ways that differ from cell to cell.
inline Snapshot fullPoint() {
    Snapshot point;
    point.time = {2026, 5, 6, 17, 8, 59};
    point.reason = "before storing: fuel map";
    point.ecu = {11, 3.386F, 0x1234};
    unsigned number = 1;
    for (auto* map : {&point.fuel, &point.ignition, &point.pwm}) {
        for (std::size_t cell = 0; cell < core::kMapSize; ++cell, ++number) {
            map->working.at(cell) = static_cast<std::uint8_t>(number);
            map->kept.at(cell) = static_cast<std::uint8_t>(number * 3);
            map->edited.at(cell) = static_cast<std::uint8_t>(number * 7);
        }
    }
    point.misc = MiscBytes{9, 8, 7, 6, 5, 4, 3, 2, 1};
    for (std::size_t i = 0; i < point.eeprom.size(); ++i) {
        point.eeprom.at(i) = {static_cast<std::uint8_t>(i * 5), i % 3 == 0 ? link::Known::Sent : link::Known::Told};
    }
    return point;
}

// Of a small ECU that has told half.
inline Snapshot partPoint() {
    Snapshot point;
    point.time = {2025, 12, 31, 0, 0, 1};
    point.reason = "by hand";
    point.fuel.working[0] = 0;
    point.fuel.kept[159] = 255;
    point.pwm.edited[64] = 3;
    point.eeprom[0] = {0, link::Known::Told};
    point.eeprom[3000] = {200, link::Known::Sent};
    return point;
}

}  // namespace korvane::keep
