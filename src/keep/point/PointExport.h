// A restore point as the other files of the program have it.
#pragma once

#include <array>
#include <string>

#include "core/tables/SharedTables.h"
#include "keep/point/Snapshot.h"

namespace korvane::keep {

// The map that a tune file or the desk gets of a point.
struct MapOfPoint {
    core::MapImage bytes{};
    bool isKnown = false;  // each cell that the firmware has
};
enum class MapFrom {
    Ecu,   // what the ECU ran on
    Desk,  // what the tuner had
};
// All cells of a map that the ECU had; of a map that it had not told as a whole, nothing is known. The desk's map is
// known unless all its cells are 0.
[[nodiscard]] MapOfPoint mapOf(const Snapshot& point, MapSnapshot Snapshot::*map, MapFrom from);

// Brings the cells of a map that the point knows into the working map `desk`; the others stay.
void bringBack(const Snapshot& point, MapSnapshot Snapshot::*map, MapFrom from, core::MapImage& desk);

// Whether its maps have 320 cells: those of the ECU, or those that were edited in the large window.
[[nodiscard]] bool usesLargeMaps(const Snapshot& point);

// 160 or 320, by the type of the ECU.
[[nodiscard]] std::int16_t mapSizeOf(const EcuIdentity& ecu);
[[nodiscard]] bool hasMap(const EcuIdentity& ecu, MapSnapshot Snapshot::*map);
inline constexpr std::array kMapsOfPoint{&Snapshot::fuel, &Snapshot::ignition, &Snapshot::pwm};

// A tune: maps of the ECU, or of the desk where the ECU's are not known; the misc block; the settings that are known.
// A sentence why there is none: a tune with a 0 in place of what is not known could be sent to an ECU.
[[nodiscard]] std::string whyNoTune(const Snapshot& point);
// Fills what a tune file is written from.
void fillTune(const Snapshot& point, core::SharedTables& tables);

// The bytes of an EEPROM image. Cells that an upload sends must be known; the others are 0 where they are not.
struct PointImage {
    std::array<std::uint8_t, core::kEepromSize> bytes{};
    std::string refusal;  // a sentence, or empty
};
[[nodiscard]] PointImage imageOf(const Snapshot& point);

}  // namespace korvane::keep
