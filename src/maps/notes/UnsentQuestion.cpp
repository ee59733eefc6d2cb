#include "maps/notes/UnsentQuestion.h"

#include <algorithm>

#include "core/tables/ModuleReg.h"
#include "maps/panes/MapStatus.h"
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
        text += std::to_string(maps[i].cells) + " " + std::string(maps[i].name) + " ";
        text += maps[i].cells == 1 ? maps[i].one : maps[i].many;
    }
    const bool single = maps.size() == 1 && maps.front().cells == 1;
    return text + (single ? " is not in the ECU" : " are not in the ECU");
}

std::string unsentText(const std::vector<UnsentMap>& maps, int settingsBoxes) {
    if (settingsBoxes == 0) {
        return unsentText(maps);
    }
    const std::string boxes = std::to_string(settingsBoxes) +
                              (settingsBoxes == 1 ? " settings box is not saved" : " settings boxes are not saved");
    return maps.empty() ? boxes : unsentText(maps) + ", and " + boxes;
}

std::vector<UnsentMap> unsentMaps(const std::vector<PaneWindow*>& windows) {
    std::vector<UnsentMap> maps;
    for (const auto* window : windows) {
        for (const auto& unsent : unsentOf(*window)) {
            add(maps, {unsent.map, unsent.cells.unsent, unsent.one, unsent.many});
        }
    }
    return maps;
}

bool mayLeaveUnsent(const std::vector<PaneWindow*>& windows) {
    return windows.empty() || mayLeaveUnsent(windows.front()->machine(), windows, 0);
}

bool mayLeaveUnsent(platform::Machine& machine, const std::vector<PaneWindow*>& windows, int settingsBoxes) {
    const auto maps = unsentMaps(windows);
    if ((maps.empty() && settingsBoxes == 0) || !isAsked(machine.preferences)) {
        return true;
    }
    const auto answer = machine.dialogs.ask(
        {"Korvane Tuner", unsentText(maps, settingsBoxes), "Close", "Keep open", "Do not ask again"});
    if (answer.stop) {
        core::RegWriteString(machine.preferences, core::kSettingsKey, kPreference, "0");
    }
    return answer.yes;
}

}  // namespace korvane::maps
