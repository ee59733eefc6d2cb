#include "maps/notes/UnsentQuestion.h"

#include <algorithm>

#include "core/tables/ModuleReg.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr const char* kPreference = "AskUnsent";

void add(std::vector<UnsentMap>& maps, const UnsentMap& map) {
    const auto same = std::find_if(maps.begin(), maps.end(), [&](const auto& each) { return each.name == map.name; });
    if (same != maps.end()) {
        same->cells = std::max(same->cells, map.cells);
    } else if (map.cells > 0) {
        maps.push_back(map);
    }
}

bool isAsked(const platform::PreferencesStore& preferences) {
    return core::RegReadString(preferences, core::kSettingsKey, kPreference).value_or("1") != "0";
}

}  // namespace

std::string unsentText(const std::vector<UnsentMap>& maps) {
    std::string text;
    for (std::size_t i = 0; i < maps.size(); ++i) {
        text += i == 0 ? "" : i + 1 == maps.size() ? " and " : ", ";
        text += std::to_string(maps[i].cells) + " " + std::string(maps[i].name);
        text += maps[i].cells == 1 ? " cell" : " cells";
    }
    const bool single = maps.size() == 1 && maps.front().cells == 1;
    return text + (single ? " is not in the ECU" : " are not in the ECU");
}

std::vector<UnsentMap> unsentMaps(const std::vector<PaneWindow*>& windows) {
    std::vector<UnsentMap> maps;
    for (const auto* window : windows) {
        for (const auto* pane : window->panes()) {
            if (const auto unsent = pane->unsentStatus()) {
                add(maps, {unsent->map, unsent->cells.unsent});
            }
        }
    }
    return maps;
}

bool mayLeaveUnsent(const std::vector<PaneWindow*>& windows) {
    const auto maps = unsentMaps(windows);
    if (maps.empty()) {
        return true;
    }
    auto& machine = windows.front()->machine();
    if (!isAsked(machine.preferences)) {
        return true;
    }
    const auto answer =
        machine.dialogs.ask({"Korvane Tuner", unsentText(maps), "Close", "Keep open", "Do not ask again"});
    if (answer.stop) {
        core::RegWriteString(machine.preferences, core::kSettingsKey, kPreference, "0");
    }
    return answer.yes;
}

}  // namespace korvane::maps
