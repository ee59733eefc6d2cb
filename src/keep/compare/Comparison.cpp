#include "keep/compare/Comparison.h"

#include <algorithm>

#include "core/Checked.h"
#include "maps/grid/StatusWords.h"

namespace korvane::keep {

namespace {

using Row = std::vector<std::string>;

constexpr std::size_t kGap = 2;  // blanks between columns

// How many characters of UTF-8 it has.
std::size_t lengthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

std::vector<std::size_t> widthsOf(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], lengthOf(row[i]));
        }
    }
    return widths;
}

std::string lineOf(const Row& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        line += row[i];
        line.append(widths[i] - lengthOf(row[i]) + kGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

void addTable(std::vector<std::string>& lines, const std::vector<Row>& rows) {
    const auto widths = widthsOf(rows);
    for (const Row& row : rows) {
        lines.push_back(lineOf(row, widths));
    }
}

void addMap(std::vector<std::string>& lines, const ComparedMap& map) {
    lines.insert(lines.end(), {"", summaryOf(map)});
    if (map.difference.cells.empty()) {
        return;
    }
    const std::string unit = ' ' + std::string(mapTitle(map.map).unit);
    const auto inUnits = gridOf(map, Unit::Tuner);
    const auto inCounts = gridOf(map, Unit::Counts);
    std::vector<Row> rows{{"cell", "place", "left" + unit, "right" + unit, "difference" + unit, "left count",
                           "right count", "difference count"}};
    for (const int cell : map.difference.cells) {
        const auto& shown = core::checked(inUnits, cell);
        const auto& counts = core::checked(inCounts, cell);
        rows.push_back({std::to_string(cell + 1), maps::placeWords(map.difference.shape, cell), shown.left, shown.right,
                        shown.delta, counts.left, counts.right, counts.delta});
    }
    addTable(lines, rows);
}

void addSettings(std::vector<std::string>& lines, const Comparison& comparison, const core::SharedTables& tables) {
    lines.insert(lines.end(), {"", summaryOf(comparison.all)});
    std::vector<Row> rows{{"address", "name", "setting", "left", "right", "difference"}};
    for (const auto& difference : comparison.all.settings) {
        if (difference.differs()) {
            const auto& setting = core::checked(comparison.settings, difference.setting);
            rows.push_back({addressText(setting), setting.name, setting.label,
                            settingText(setting, difference.left, tables),
                            settingText(setting, difference.right, tables), settingDelta(setting, difference, tables)});
        }
    }
    if (rows.size() > 1) {
        addTable(lines, rows);
    }
}

std::string sideLine(const char* which, const Side& side) {
    return which + side.name + (side.note.empty() ? "" : " (" + side.note + ')');
}

}  // namespace

Comparison::Comparison(const Side& leftSide, const Side& rightSide, const core::SharedTables& tables,
                       const fields::Fields& fields, double injectionOffset)
    : left(leftSide),
      right(rightSide),
      settings(settingsOf(tables, fields)),
      all(differences(left, right, settings)),
      units(tables, all.maps.front().shape.cells() == maps::kLargeMaps.cells(), injectionOffset) {}

ComparedMap Comparison::map(std::size_t map) const {
    return {map, core::checked(all.maps, map), core::checked(left.maps, map), core::checked(right.maps, map), units};
}

std::string Comparison::mapCaption(std::size_t map) const {
    const auto& difference = core::checked(all.maps, map);
    return std::string(mapTitle(map).title) +
           (difference.isComparable ? " (" + std::to_string(difference.cells.size()) + ')' : "");
}

std::vector<std::string> linesOf(const Comparison& comparison, const core::SharedTables& tables) {
    std::vector<std::string> lines{sideLine("Left:  ", comparison.left), sideLine("Right: ", comparison.right)};
    for (std::size_t map = 0; map < kMapCount; ++map) {
        addMap(lines, comparison.map(map));
    }
    addSettings(lines, comparison, tables);
    return lines;
}

}  // namespace korvane::keep
