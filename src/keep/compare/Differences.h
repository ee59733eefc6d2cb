// What differs between two sides.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fields/Codec.h"
#include "fields/Fields.h"
#include "keep/compare/Side.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::keep {

struct MapDifference {
    bool isComparable = true;  // false: a map of 160 cells against one of 320, whose cells mean other places
    maps::MapGeometry shape = maps::kOrdinaryMaps;
    std::vector<int> cells;  // known on both sides and different, in rising order
    int knownOnOneSide = 0;  // cells
};

// A map whose size nobody knows has that of the other side.
[[nodiscard]] MapDifference differenceOf(const MapSide& left, const MapSide& right);

// A row of the table of settings: one byte, or a word whose high byte is in the next cell.
struct Setting {
    int address = 0;  // of the EEPROM; of the misc block its index, 1 to 9
    bool isMisc = false;
    bool isWord = false;
    fields::Codec codec;
    std::string name;   // "RPMLIMIT_COLD_LOW_OFF", "ACCEL_OFF+3"
    std::string label;  // what the settings window calls it; may be empty

    friend bool operator==(const Setting& one, const Setting& other) {
        return one.address == other.address && one.isMisc == other.isMisc;
    }
};

// All settings: the misc block, then the cells of the EEPROM that keep no map.
[[nodiscard]] std::vector<Setting> settingsOf(const core::SharedTables& tables, const fields::Fields& fields);

// The count of a setting; nothing if it is not known, or only half of it.
[[nodiscard]] std::optional<std::int32_t> countOf(const Side& side, const Setting& setting);

struct SettingDifference {
    std::size_t setting;  // index in the list of settings
    std::optional<std::int32_t> left, right;

    // Known on both sides, and different.
    [[nodiscard]] bool differs() const { return left && right && *left != *right; }
    friend bool operator==(const SettingDifference&, const SettingDifference&) = default;
};

struct Differences {
    std::array<MapDifference, kMapCount> maps;
    std::vector<SettingDifference> settings;  // known on one side at least
    int differentSettings = 0;

    friend bool operator==(const Differences&, const Differences&) = default;
};

[[nodiscard]] Differences differences(const Side& left, const Side& right, const std::vector<Setting>& settings);

}  // namespace korvane::keep
