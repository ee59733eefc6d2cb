// One side of a comparison: the maps and settings of an ECU, a file or the tuner's desk, as far as they are known.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "keep/point/Snapshot.h"

namespace korvane::keep {

inline constexpr std::size_t kMapCount = 3;  // fuel, ignition, PWM

struct MapSide {
    MapSnapshot::Bytes bytes;
    int size = 0;  // 160 or 320 cells; 0 where nothing says so

    friend bool operator==(const MapSide&, const MapSide&) = default;
};

struct Side {
    std::string name;  // "ECU", "tune tunes/road.txt"
    std::string note;  // what there is to say about it, such as that nothing has been read yet; may be empty
    std::array<MapSide, kMapCount> maps;
    std::optional<MiscBytes> misc;
    std::array<std::optional<std::uint8_t>, core::kEepromSize> eeprom;

    friend bool operator==(const Side&, const Side&) = default;
};

// What was read of an ECU before it was connected again, or has restarted, and is no longer taken for what it has.
struct ReadBefore {
    bool maps = false;
    bool settings = false;
};

// What the ECU had at that moment: the maps that it ran on.
[[nodiscard]] Side sideOfEcu(const Snapshot& snapshot, const ReadBefore& before = {});
// The maps that the tuner had. Nothing of the settings.
[[nodiscard]] Side sideOfDesk(const Snapshot& snapshot);

}  // namespace korvane::keep
