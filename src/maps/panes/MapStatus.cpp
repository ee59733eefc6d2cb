#include "maps/panes/MapStatus.h"

#include <algorithm>
#include <vector>

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

MapStatus collected(const PaneWindow& window) {
    MapStatus status;
    std::vector<StoreOfMap> stores;
    if (auto* const pane = window.paneWithFocus()) {
        status.cell = pane->cellStatus(*window.activeControl()->index());
        status.block = pane->blockStatus();
    }
    for (const auto* pane : window.panes()) {
        if (status.block.empty()) {
            status.block = pane->blockStatus();
        }
        if (const auto store = pane->storeStatus()) {
            stores.push_back(*store);
        }
    }
    status.unsent = unsentWords(unsentOf(window));
    status.store = storeWords(stores);
    status.unknown = unknownWords(stores);
    return status;
}

}  // namespace

std::vector<UnsentOfMap> unsentOf(const PaneWindow& window) {
    std::vector<UnsentOfMap> all;
    for (const auto* pane : window.panes()) {
        if (const auto unsent = pane->unsentStatus()) {
            all.push_back(*unsent);
        }
    }
    std::stable_partition(all.begin(), all.end(), [&](const auto& each) { return each.one == UnsentOfMap().one; });
    return all;
}

MapStatus statusOf(const PaneWindow& window) {
    try {
        return collected(window);
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

}  // namespace korvane::maps
