#include "maps/panes/MapStatus.h"

#include <vector>

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

MapStatus collected(const PaneWindow& window) {
    MapStatus status;
    std::vector<UnsentOfMap> maps;
    std::vector<StoreOfMap> stores;
    if (auto* const pane = window.paneWithFocus()) {
        status.cell = pane->cellStatus(*window.activeControl()->index());
        status.block = pane->blockStatus();
    }
    for (const auto* pane : window.panes()) {
        if (status.block.empty()) {
            status.block = pane->blockStatus();
        }
        if (const auto unsent = pane->unsentStatus()) {
            maps.push_back(*unsent);
        }
        if (const auto store = pane->storeStatus()) {
            stores.push_back(*store);
        }
    }
    status.unsent = unsentWords(maps);
    status.store = storeWords(stores);
    status.unknown = unknownWords(stores);
    return status;
}

}  // namespace

MapStatus statusOf(const PaneWindow& window) {
    try {
        return collected(window);
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

}  // namespace korvane::maps
