// Two sides, what differs between them, and the units in which it is shown.
#pragma once

#include <string>
#include <vector>

#include "core/tables/SharedTables.h"
#include "fields/Fields.h"
#include "keep/compare/DiffWords.h"
#include "keep/compare/Differences.h"
#include "maps/grid/MapUnits.h"

namespace korvane::keep {

struct Comparison {
    // `injectionOffset` is what the box of the misc block says.
    Comparison(const Side& leftSide, const Side& rightSide, const core::SharedTables& tables,
               const fields::Fields& fields, double injectionOffset);

    [[nodiscard]] ComparedMap map(std::size_t map) const;
    // "Fuel (3)", "Fuel" for maps that can't be compared.
    [[nodiscard]] std::string mapCaption(std::size_t map) const;

    Side left, right;
    std::vector<Setting> settings;
    Differences all;
    maps::MapUnits units;
};

// All that differs as lines of plain text.
[[nodiscard]] std::vector<std::string> linesOf(const Comparison& comparison, const core::SharedTables& tables);

}  // namespace korvane::keep
