// Everything that is known of an ECU at a moment, and the maps on the tuner's desk beside it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "link/EcuEeprom.h"
#include "platform/WallTime.h"

namespace korvane::keep {

// One map, cell by cell. Cells behind the last one of a small map are unknown, and 0 on the desk.
struct MapSnapshot {
    using Bytes = std::array<std::optional<std::uint8_t>, core::kMapSize>;

    Bytes working;            // what the ECU runs on
    Bytes kept;               // what it has stored
    core::MapImage edited{};  // what the tuner has

    friend bool operator==(const MapSnapshot&, const MapSnapshot&) = default;
};

// MiscBlock(1) to MiscBlock(9).
using link::MiscBytes;

struct EcuIdentity {
    std::int32_t swType = 0;
    float hwVersion = 0.0F;
    std::int32_t features = -1;

    friend bool operator==(const EcuIdentity&, const EcuIdentity&) = default;
};

struct Snapshot {
    platform::WallTime time;
    std::string reason;
    EcuIdentity ecu;
    MapSnapshot fuel, ignition, pwm;
    std::optional<MiscBytes> misc;
    link::EepromCells eeprom{};

    friend bool operator==(const Snapshot&, const Snapshot&) = default;
};

// Made from what has been received: sends nothing. `misc` is the misc block, if it was heard.
[[nodiscard]] Snapshot snapshotOf(const core::SharedTables& tables, const link::ConnectionPanel& connection,
                                  const std::optional<MiscBytes>& misc, const platform::WallTime& now);

}  // namespace korvane::keep
