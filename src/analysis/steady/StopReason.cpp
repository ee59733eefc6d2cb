#include "analysis/steady/StopReason.h"

#include <array>
#include <cstddef>

namespace korvane::steady {

namespace {

struct StopRule {
    std::string_view words;
    WayBack back = WayBack::LastGood;
};

// In the order of StopReason.
constexpr std::array<StopRule, static_cast<std::size_t>(StopReason::Count)> kRules = {{
    {""},
    {"lean under load", WayBack::Richer},
    {"link late"},
    {"ECU restarted"},
    {"send refused"},
    {"lambda stuck"},
    {"lambda does not follow a fuel cut"},
    {"lambda stays lean after a fuel cut"},
    {"lambda at the lean end of its range"},
    {"lambda at the rich end of its range, or absent"},
    {"engine was warm and reads cold"},
    {"ECU corrects by lambda itself"},
    {"put back by the tuner", WayBack::Baseline},
}};

}  // namespace

std::string_view wordsOf(StopReason reason) {
    return kRules.at(static_cast<std::size_t>(reason)).words;
}

WayBack wayBackOf(StopReason reason) {
    return kRules.at(static_cast<std::size_t>(reason)).back;
}

}  // namespace korvane::steady
