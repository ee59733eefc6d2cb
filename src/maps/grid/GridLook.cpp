#include "maps/grid/GridLook.h"

#include "core/tables/ModuleReg.h"

namespace korvane::maps {

namespace {

constexpr std::string_view kHeatTint = "MapHeatTint";
constexpr std::string_view kAlignNumbers = "MapAlignNumbers";

bool isOn(const platform::PreferencesStore& preferences, std::string_view name) {
    return core::RegReadNumber(preferences, core::kSettingsKey, name) != 0;
}

}  // namespace

GridLook::GridLook(platform::PreferencesStore& preferences)
    : HeatTint(*this, isOn(preferences, kHeatTint)),
      AlignNumbers(*this, isOn(preferences, kAlignNumbers)),
      preferences_(preferences) {}

void GridLook::afterChange(const void* property) {
    const bool heat = property == &HeatTint;
    core::RegWriteString(preferences_, core::kSettingsKey, heat ? kHeatTint : kAlignNumbers,
                         (heat ? HeatTint : AlignNumbers) ? "1" : "0");
}

}  // namespace korvane::maps
