#include "keep/point/PointExport.h"

#include <algorithm>
#include <string_view>

#include "core/ParameterAddresses.h"
#include "core/tables/Module1.h"

namespace korvane::keep {

namespace {

constexpr int kLastUploaded = 1010;
constexpr std::string_view kNames[] = {"fuel", "ignition", "PWM"};

// Cells that a read tells: the PWM table has some that the ECU does not keep.
std::size_t firstCellOf(MapSnapshot Snapshot::*map) {
    return map == &Snapshot::pwm ? link::EcuMaps::kFirstKeptPwm : 0;
}

std::size_t endOf(const Snapshot& point, MapSnapshot Snapshot::*map) {
    return map == &Snapshot::pwm ? link::EcuMap::kHalf : static_cast<std::size_t>(mapSizeOf(point.ecu));
}

// Of the desk more cells may be used than the ECU has, and it may be one without an ECU.
std::size_t endOfDesk(const Snapshot& point, MapSnapshot Snapshot::*map) {
    return map != &Snapshot::pwm && usesLargeMaps(point) ? core::kMapSize : endOf(point, map);
}

MapOfPoint ecuMapOf(const Snapshot& point, MapSnapshot Snapshot::*map) {
    const auto& cells = (point.*map).working;
    MapOfPoint found{.bytes = (point.*map).edited, .isKnown = true};
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        found.bytes.at(cell) = cells.at(cell).value_or(found.bytes.at(cell));
        const bool counts = cell >= firstCellOf(map) && cell < endOf(point, map);
        found.isKnown = found.isKnown && (cells.at(cell) || !counts);
    }
    return found;
}

MapOfPoint mapOfTune(const Snapshot& point, MapSnapshot Snapshot::*map) {
    const auto ofEcu = mapOf(point, map, MapFrom::Ecu);
    return ofEcu.isKnown ? ofEcu : mapOf(point, map, MapFrom::Desk);
}

// What the EEPROM has at an address that keeps a cell of a map is known from the map, too.
link::EepromCell cellOf(const Snapshot& point, const core::ParameterAddresses& places, int address) {
    const auto& cell = point.eeprom.at(static_cast<std::size_t>(address));
    const auto place = link::mapCellAt(places, address);
    if (!place) {
        return cell;
    }
    const auto& map = place->map == &link::EcuMaps::fuel       ? point.fuel
                      : place->map == &link::EcuMaps::ignition ? point.ignition
                                                               : point.pwm;
    const auto kept = map.kept.at(place->cell);
    return kept ? link::EepromCell{*kept, link::Known::Told} : cell;
}

void fillParameter(const Snapshot& point, core::EEParam& row, std::size_t address) {
    const auto& low = point.eeprom.at(address);
    if (low.known == link::Known::No) {
        return;
    }
    row.value = low.byte;
    if (row.is16bit && address + 1 < point.eeprom.size()) {
        const auto& high = point.eeprom.at(address + 1);
        row.value = high.known == link::Known::No ? core::ParameterValue()
                                                  : core::ParameterValue(std::int32_t{low.byte} + 256 * high.byte);
    }
}

}  // namespace

std::int16_t mapSizeOf(const EcuIdentity& ecu) {
    return core::hasLargeMaps(ecu.swType) ? 320 : 160;
}

bool usesLargeMaps(const Snapshot& point) {
    const auto isUsed = [](const core::MapImage& cells) {
        return std::any_of(cells.begin() + link::EcuMap::kHalf, cells.end(), [](auto cell) { return cell != 0; });
    };
    return core::hasLargeMaps(point.ecu.swType) || isUsed(point.fuel.edited) || isUsed(point.ignition.edited);
}

bool hasMap(const EcuIdentity& ecu, MapSnapshot Snapshot::*map) {
    return !core::limitsOnly(ecu.swType) && (map == &Snapshot::ignition || !core::ignitesOnly(ecu.swType));
}

MapOfPoint mapOf(const Snapshot& point, MapSnapshot Snapshot::*map, MapFrom from) {
    if (from == MapFrom::Ecu) {
        return ecuMapOf(point, map);
    }
    const auto& edited = (point.*map).edited;
    return {.bytes = edited, .isKnown = edited != core::MapImage{}};
}

void bringBack(const Snapshot& point, MapSnapshot Snapshot::*map, MapFrom from, core::MapImage& desk) {
    const auto& [working, kept, edited] = point.*map;
    const auto end = from == MapFrom::Desk ? endOfDesk(point, map) : endOf(point, map);
    for (std::size_t cell = 0; cell < end; ++cell) {
        desk.at(cell) = from == MapFrom::Desk ? edited.at(cell) : working.at(cell).value_or(desk.at(cell));
    }
}

std::string whyNoTune(const Snapshot& point) {
    for (std::size_t i = 0; i < kMapsOfPoint.size(); ++i) {
        const auto map = kMapsOfPoint.at(i);
        if (hasMap(point.ecu, map) && !mapOfTune(point, map).isKnown) {
            return "No tune: the restore point does not know the " + std::string(kNames[i]) + " map.";
        }
    }
    return point.misc ? std::string() : "No tune: the restore point does not know the misc block.";
}

void fillTune(const Snapshot& point, core::SharedTables& tables) {
    core::InitParams(tables, point.ecu.swType);
    tables.FuelMapOut = mapOfTune(point, &Snapshot::fuel).bytes;
    tables.IgnMapOut = mapOfTune(point, &Snapshot::ignition).bytes;
    tables.PwmMapOut = mapOfTune(point, &Snapshot::pwm).bytes;
    if (point.misc) {
        std::copy(point.misc->begin(), point.misc->end(), tables.MiscBlock.begin() + 1);
    }
    for (std::size_t address = 0; address < tables.EEParams.size(); ++address) {
        fillParameter(point, tables.EEParams.at(address), address);
    }
}

PointImage imageOf(const Snapshot& point) {
    const auto places = core::parameterAddresses(point.ecu.swType);
    PointImage image;
    int unknown = 0;
    int first = 0;
    for (int address = 0; address < static_cast<int>(image.bytes.size()); ++address) {
        const auto cell = cellOf(point, places, address);
        image.bytes.at(static_cast<std::size_t>(address)) = cell.byte;
        if (cell.known == link::Known::No && address <= kLastUploaded && unknown++ == 0) {
            first = address;
        }
    }
    if (unknown > 0) {
        image.refusal = "No image: " + std::to_string(unknown) +
                        " of the cells 0 to 1010 are not known, the first is " + std::to_string(first) +
                        ". \"Backup EEPROM\" reads them all.";
    }
    return image;
}

}  // namespace korvane::keep
