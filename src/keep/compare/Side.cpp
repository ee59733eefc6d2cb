#include "keep/compare/Side.h"

#include <algorithm>
#include <string_view>

#include "core/tables/Module1.h"

namespace korvane::keep {

namespace {

using Bytes = MapSnapshot::Bytes;

constexpr auto kSmallMap = static_cast<int>(link::EcuMap::kHalf);
constexpr auto kLargeMap = static_cast<int>(core::kMapSize);

constexpr std::array<MapSnapshot Snapshot::*, kMapCount> kMaps{&Snapshot::fuel, &Snapshot::ignition, &Snapshot::pwm};

// By the type of the ECU, or else by whether there is anything behind the cells of a small map.
int sizeOf(const Snapshot& snapshot, bool hasLargeCells) {
    if (snapshot.ecu.swType != 0) {
        return core::hasLargeMaps(snapshot.ecu.swType) ? kLargeMap : kSmallMap;
    }
    return hasLargeCells ? kLargeMap : 0;
}

bool isKnown(const std::optional<std::uint8_t>& byte) {
    return byte.has_value();
}

bool isSet(std::uint8_t byte) {
    return byte != 0;
}

bool hasMaps(const Side& side) {
    return std::any_of(side.maps.begin(), side.maps.end(),
                       [](const MapSide& map) { return std::any_of(map.bytes.begin(), map.bytes.end(), isKnown); });
}

std::string ecuNote(const Side& side, const ReadBefore& before) {
    const bool hasSettings = std::any_of(side.eeprom.begin(), side.eeprom.end(), isKnown);
    if (!hasMaps(side)) {
        const std::string_view missing = hasSettings ? "No map" : before.maps ? "Nothing" : "No ECU";
        return std::string(missing) +
               (before.maps ? " has been read since the last connect or restart." : " has been read yet.");
    }
    if (hasSettings) {
        return {};
    }
    return before.settings ? "No setting has been read since the last connect." : "No setting has been read yet.";
}

bool isEmpty(const MapSnapshot& map) {
    return std::none_of(map.edited.begin(), map.edited.end(), isSet);
}

}  // namespace

Side sideOfEcu(const Snapshot& snapshot, const ReadBefore& before) {
    Side side;
    side.name = "ECU";
    for (std::size_t map = 0; map < kMapCount; ++map) {
        const Bytes& bytes = (snapshot.*kMaps.at(map)).working;
        side.maps.at(map) = {bytes, sizeOf(snapshot, std::any_of(bytes.begin() + kSmallMap, bytes.end(), isKnown))};
    }
    side.misc = snapshot.misc;
    for (std::size_t address = 0; address < side.eeprom.size(); ++address) {
        const auto& cell = snapshot.eeprom.at(address);
        if (cell.known != link::Known::No) {
            side.eeprom.at(address) = cell.byte;
        }
    }
    side.note = ecuNote(side, before);
    return side;
}

Side sideOfDesk(const Snapshot& snapshot) {
    Side side;
    side.name = "working maps";
    for (std::size_t map = 0; map < kMapCount; ++map) {
        const auto& edited = (snapshot.*kMaps.at(map)).edited;
        const int size = sizeOf(snapshot, std::any_of(edited.begin() + kSmallMap, edited.end(), isSet));
        side.maps.at(map).size = size;
        std::copy_n(edited.begin(), size == kSmallMap ? kSmallMap : kLargeMap, side.maps.at(map).bytes.begin());
    }
    if (isEmpty(snapshot.fuel) && isEmpty(snapshot.ignition) && isEmpty(snapshot.pwm)) {
        side.note = "No map has been read or loaded yet: all cells are 0.";
    }
    return side;
}

}  // namespace korvane::keep
