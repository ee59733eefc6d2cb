// Preferences that are kept as long as their object exists.
#pragma once

#include <map>
#include <utility>

#include "platform/PreferencesStore.h"

namespace korvane::support {

class MemoryPreferences : public platform::PreferencesStore {
public:
    [[nodiscard]] std::optional<std::string> read(std::string_view key, std::string_view name) const override {
        const auto found = texts_.find({std::string(key), std::string(name)});
        return found == texts_.end() ? std::nullopt : std::optional(found->second);
    }

    void write(std::string_view key, std::string_view name, std::string_view text) override {
        texts_.insert_or_assign({std::string(key), std::string(name)}, std::string(text));
    }

private:
    std::map<std::pair<std::string, std::string>, std::string> texts_;
};

}  // namespace korvane::support
