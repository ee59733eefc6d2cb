#include "maps/panes/MapStatus.h"

#include <vector>

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

bool hasFocus(MapPane& pane, const controls::Control& focus) {
    auto* const grid = pane.paneGrid();
    return grid != nullptr && focus.index() && focus.name() == (*grid)(0).name();
}

MapPane* paneOf(const PaneWindow& window, const controls::Control* focus) {
    for (auto* pane : window.panes()) {
        if (focus != nullptr && hasFocus(*pane, *focus)) {
            return pane;
        }
    }
    return nullptr;
}

MapStatus collected(const PaneWindow& window) {
    MapStatus status;
    std::vector<UnsentOfMap> maps;
    std::vector<StoreOfMap> stores;
    const auto* const focus = window.activeControl();
    if (auto* const pane = paneOf(window, focus)) {
        status.cell = pane->cellStatus(*focus->index());
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
