// The units of the live values in the main window.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "controls/Property.h"
#include "core/tables/LiveTable.h"

namespace korvane::live {

inline constexpr std::size_t kValueLabels = 12;

// The unit of a channel's value by the rules of its decoding; empty for a count.
[[nodiscard]] std::string_view decodedUnit(std::size_t channel);

// A value whose gain is not 1 is no longer in its own unit: then none is shown.
class ValueUnits : public controls::Object {
public:
    // From the gains as they are now.
    void follow(const core::LiveTable& tables);

    // By the number of the label.
    [[nodiscard]] const std::string& of(std::size_t label) const { return units_.at(label); }

private:
    std::array<std::string, kValueLabels> units_;
};

}  // namespace korvane::live
