#include "core/tables/ModuleReg.h"

#include "core/Numbers.h"
#include "core/TextEncoding.h"
#include "platform/RuntimeError.h"

namespace korvane::core {

std::optional<std::string> RegReadString(const platform::PreferencesStore& preferences, std::string_view key,
                                         std::string_view name) {
    const auto stored = preferences.read(key, name);
    if (!stored) {
        return std::nullopt;
    }
    return decode(std::string_view(*stored).substr(0, stored->find('\0')));
}

void RegWriteString(platform::PreferencesStore& preferences, std::string_view key, std::string_view name,
                    std::string_view text) {
    preferences.write(key, name, text);
}

std::int32_t RegReadNumber(const platform::PreferencesStore& preferences, std::string_view key, std::string_view name) {
    try {
        return toInt32(val(RegReadString(preferences, key, name).value_or("")));
    } catch (const platform::RuntimeError&) {
        return 0;
    }
}

}  // namespace korvane::core
