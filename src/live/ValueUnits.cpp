#include "live/ValueUnits.h"

namespace korvane::live {

namespace {

// In the order of the channels. The two controllers' labels never show their values.
constexpr std::array<std::string_view, kValueLabels> kUnits{"1/min", "\u00B0C", "\u00B0C", "V", "bar",     "%",
                                                            "AFR",   "of 256",  "",        "",  "\u00B0C", "\u00B0"};

}  // namespace

std::string_view decodedUnit(std::size_t channel) {
    return channel < kUnits.size() ? kUnits.at(channel) : std::string_view();
}

void ValueUnits::follow(const core::LiveTable& tables) {
    for (std::size_t i = 0; i < units_.size(); ++i) {
        units_.at(i) = tables.liveValues.at(i).gain == 1.0 ? decodedUnit(i) : std::string_view();
    }
    changed(&units_);
}

}  // namespace korvane::live
