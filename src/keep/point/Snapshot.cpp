#include "keep/point/Snapshot.h"

namespace korvane::keep {

namespace {

MapSnapshot mapOf(const link::EcuMap& inEcu, const core::MapImage& edited) {
    MapSnapshot map{.working = {}, .kept = {}, .edited = edited};
    for (std::size_t cell = 0; cell < core::kMapSize; ++cell) {
        if (inEcu.isFresh(cell)) {
            map.working.at(cell) = inEcu.working(cell);
            map.kept.at(cell) = inEcu.kept(cell);
        }
    }
    return map;
}

}  // namespace

Snapshot snapshotOf(const core::SharedTables& tables, const link::ConnectionPanel& connection,
                    const std::optional<MiscBytes>& misc, const platform::WallTime& now) {
    const auto& maps = connection.ecuMaps;
    return {.time = now,
            .reason = {},
            .ecu = {tables.SWType, tables.HwVersion, tables.Features},
            .fuel = mapOf(maps.fuel, tables.FuelMapOut),
            .ignition = mapOf(maps.ignition, tables.IgnMapOut),
            .pwm = mapOf(maps.pwm, tables.PwmMapOut),
            .misc = misc,
            .eeprom = connection.ecuEeprom.cells()};
}

}  // namespace korvane::keep
