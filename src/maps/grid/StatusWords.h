// What the status line of a map window says of a cell, a block and the cells that were not sent.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "maps/grid/MapGeometry.h"
#include "maps/grid/Selection.h"
#include "maps/transfer/UnsentCells.h"

namespace korvane::maps {

// What a map is called, and the unit of its numbers; string literals.
struct MapNoun {
    std::string_view title;   // "Fuel"
    std::string_view inside;  // "fuel", within a sentence
    std::string_view unit;    // "ms"
};

// A cell's value and the count behind it.
struct CellValue {
    double number = 0;
    std::uint8_t count = 0;
};

struct CellFacts {
    CellValue edited;
    CellValue received;
    bool tooLong = false;              // a pulse that the engine's speed leaves no time for
    std::optional<double> power = {};  // horsepower that the pulse is good for
    float injectorSize = 0;            // ccm per minute
};

// "2500 RPM, 20-30 %"
[[nodiscard]] std::string placeWords(MapGeometry shape, int cell);
// "Fuel, 2500 RPM, 20-30 %: 4.35 ms (was 4.2), count 87 (was 84), 38.5 hp with 550 cc"
[[nodiscard]] std::string cellWords(const MapNoun& map, MapGeometry shape, int cell, const CellFacts& facts);
// "Fuel, 2500 RPM, 20-30 %: not read from the ECU yet"
[[nodiscard]] std::string neverReadWords(const MapNoun& map, MapGeometry shape, int cell);
// "Fuel block of 24 cells, sum 103.2 ms"; so many `unread` cells are not in the sum: "... without 3 cells not read"
[[nodiscard]] std::string blockWords(const MapNoun& map, CellRange range, double sum, int unread);
// "Not sent: 12 fuel, 3 ignition; not stored: 1 PWM"; empty for none.
struct UnsentOfMap {
    std::string_view map;  // within a sentence
    UnsentCells cells;
    std::string_view one = "cell";  // what they are called
    std::string_view many = "cells";
};
[[nodiscard]] std::string unsentWords(std::span<const UnsentOfMap> maps);
// "Sent fuel: acknowledged, told to store; sent PWM: not told to store"; empty where nothing was sent.
struct StoreOfMap {
    std::string_view map;  // within a sentence
    link::Store store;
};
[[nodiscard]] std::string storeWords(std::span<const StoreOfMap> maps);
// "Not read since the last connect or restart: fuel, PWM; no new restore point would have what a send overwrites";
// empty for none.
[[nodiscard]] std::string unreadWords(std::span<const std::string_view> maps);
// "Not known whether stored: ignition, PWM", of maps that were only read.
[[nodiscard]] std::string unknownWords(std::span<const StoreOfMap> maps);

}  // namespace korvane::maps
