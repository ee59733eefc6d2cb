#include "maps/panes/MapStatus.h"

#include <algorithm>
#include <vector>

#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

// Those of the maps first, as in unsentOf().
std::vector<MapPane::Sends> sendsOf(const PaneWindow& window) {
    std::vector<MapPane::Sends> all;
    for (const auto* pane : window.panes()) {
        if (const auto sends = pane->sends()) {
            all.push_back(*sends);
        }
    }
    std::stable_partition(all.begin(), all.end(),
                          [](const auto& each) { return each.part != core::Overwritten::Part::Misc; });
    return all;
}

std::string unreadOf(const PaneWindow& window) {
    const auto& connection = window.context().connection;
    std::string told;
    std::vector<std::string_view> unread;
    for (const auto& [map, part, isRead] : sendsOf(window)) {
        const auto& text = connection.keepNotice.overwritten(part);
        told += (told.empty() || text.empty() ? "" : " ") + text;
        if (!isRead && connection.MSComm1.PortOpen()) {
            unread.push_back(map);
        }
    }
    const auto words = unreadWords(unread);
    return told + (told.empty() || words.empty() ? "" : " ") + words;
}

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
    status.unread = unreadOf(window);
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
