// How many of the settings that were asked for the ECU has told.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"

namespace korvane::link {

// Of the last read of all settings. The bar beside it counts what was asked for.
class ReadTally : public controls::Object {
public:
    controls::Property<std::string> Text{*this};  // "3 of 21 cells answered"; empty before the first

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }
};

}  // namespace korvane::link
