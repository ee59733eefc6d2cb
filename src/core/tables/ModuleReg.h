// The preferences under the program's own names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PreferencesStore.h"

namespace korvane::core {

inline constexpr std::string_view kProgramTitle = "KorvaneTuner";
inline constexpr std::string_view kSettingsKey = "Software\\KorvaneTuner\\Settings";

// The stored text in UTF-8 up to its first NUL, or nothing.
[[nodiscard]] std::optional<std::string> RegReadString(const platform::PreferencesStore& preferences,
                                                       std::string_view key, std::string_view name);
void RegWriteString(platform::PreferencesStore& preferences, std::string_view key, std::string_view name,
                    std::string_view text);

// The stored text as a whole number. One that is missing, is no number or needs more than 32 bits counts as 0.
[[nodiscard]] std::int32_t RegReadNumber(const platform::PreferencesStore& preferences, std::string_view key,
                                         std::string_view name);

}  // namespace korvane::core
