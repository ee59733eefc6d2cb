#include "link/VerifySwitch.h"

#include "core/tables/ModuleReg.h"

namespace korvane::link {

namespace {

constexpr std::string_view kVerify = "VerifyWrites";

}  // namespace

VerifySwitch::VerifySwitch(platform::PreferencesStore& preferences)
    : On(*this, core::RegReadNumber(preferences, core::kSettingsKey, kVerify) != 0), preferences_(preferences) {}

void VerifySwitch::afterChange(const void*) {
    core::RegWriteString(preferences_, core::kSettingsKey, kVerify, On ? "1" : "0");
}

}  // namespace korvane::link
