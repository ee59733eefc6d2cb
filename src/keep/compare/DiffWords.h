// Differences in words, in the tuner's units and in counts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/tables/SharedTables.h"
#include "keep/compare/DiffGrid.h"
#include "keep/compare/Differences.h"
#include "maps/grid/MapUnits.h"

namespace korvane::keep {

// "Fuel", "fuel", "ms"; of ignition and PWM likewise.
struct MapTitle {
    std::string_view title;
    std::string_view inside;
    std::string_view unit;
    double (maps::MapUnits::*number)(std::uint8_t) const;
};
[[nodiscard]] const MapTitle& mapTitle(std::size_t map);

enum class Unit { Tuner, Counts };

struct ComparedMap {
    std::size_t map;
    const MapDifference& difference;
    const MapSide& left;
    const MapSide& right;
    const maps::MapUnits& units;
};

// All cells of its grid, equal ones too; none of maps that can't be compared. With numbers in this unit; the words have
// both.
[[nodiscard]] std::vector<DiffCell> gridOf(const ComparedMap& map, Unit unit);

// "Fuel: 3 of 160 cells differ; 5 are known on one side only.", or why nothing is compared.
[[nodiscard]] std::string summaryOf(const ComparedMap& map);

// "365", of the misc block "misc 1".
[[nodiscard]] std::string addressText(const Setting& setting);
// A value of a setting with its unit: "2.5 ms (180)", "30", "not known".
[[nodiscard]] std::string settingText(const Setting& setting, std::optional<std::int32_t> count,
                                      const core::SharedTables& tables);
// "▲ +5", with the unit of the setting where it has one; empty where nothing differs or one side is not known.
[[nodiscard]] std::string settingDelta(const Setting& setting, const SettingDifference& difference,
                                       const core::SharedTables& tables);
[[nodiscard]] std::string summaryOf(const Differences& all);

// "+0.2", "-3".
[[nodiscard]] std::string signedText(double number);
// "▲", "▼", or nothing.
[[nodiscard]] std::string_view markOf(Sign sign);

}  // namespace korvane::keep
