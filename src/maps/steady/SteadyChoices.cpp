#include "maps/steady/SteadyChoices.h"

#include <algorithm>
#include <string>

#include "core/Numbers.h"
#include "core/tables/ModuleReg.h"

namespace korvane::maps {

namespace {

constexpr auto kRich = "SteadyRichAuthority";
constexpr auto kLean = "SteadyLeanAuthority";
constexpr auto kCarry = "SteadyCarry";
constexpr double kDefaultRich = 15.0;
constexpr double kDefaultLean = 5.0;

std::string delayName(std::size_t zone) {
    return "SteadyDelay" + std::to_string(zone);
}

double remembered(const platform::PreferencesStore& preferences, std::string_view name, double most, double usual) {
    const auto text = core::RegReadString(preferences, core::kSettingsKey, name);
    return text ? std::clamp(core::val(*text), 0.0, most) : usual;
}

}  // namespace

SteadyChoices::SteadyChoices(platform::PreferencesStore& preferences)
    : RichAuthority(*this, remembered(preferences, kRich, kMostAuthority, kDefaultRich)),
      LeanAuthority(*this, remembered(preferences, kLean, kMostAuthority, kDefaultLean)),
      Carry(*this, core::RegReadNumber(preferences, core::kSettingsKey, kCarry) != 0),
      FixedDelayMs{controls::Property<double>(*this, remembered(preferences, delayName(0), kLongestDelay, 0.0)),
                   controls::Property<double>(*this, remembered(preferences, delayName(1), kLongestDelay, 0.0)),
                   controls::Property<double>(*this, remembered(preferences, delayName(2), kLongestDelay, 0.0)),
                   controls::Property<double>(*this, remembered(preferences, delayName(3), kLongestDelay, 0.0))},
      preferences_(preferences) {}

void SteadyChoices::afterChange(const void* property) {
    const auto write = [&](std::string_view name, double value) {
        core::RegWriteString(preferences_, core::kSettingsKey, name, core::textOf(value));
    };
    if (property == &RichAuthority) {
        write(kRich, RichAuthority);
    } else if (property == &LeanAuthority) {
        write(kLean, LeanAuthority);
    } else if (property == &Carry) {
        write(kCarry, Carry ? 1.0 : 0.0);
    }
    for (std::size_t zone = 0; zone < kZones; ++zone) {
        if (property == &FixedDelayMs.at(zone)) {
            write(delayName(zone), FixedDelayMs.at(zone));
        }
    }
}

}  // namespace korvane::maps
