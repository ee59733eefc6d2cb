// Where the program keeps what it remembers between runs: named texts under named keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

class PreferencesStore {
public:
    virtual ~PreferencesStore() = default;

    // The text stored under `key` and `name`, or nothing.
    [[nodiscard]] virtual std::optional<std::string> read(std::string_view key, std::string_view name) const = 0;

    // Stores `text`. A store that can't be written keeps the value for this run and reports nothing.
    virtual void write(std::string_view key, std::string_view name, std::string_view text) = 0;
};

}  // namespace korvane::platform
