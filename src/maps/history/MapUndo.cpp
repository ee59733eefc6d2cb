#include "maps/history/MapUndo.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "core/Checked.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

constexpr int kH = 72;
constexpr int kY = 89;
constexpr int kZ = 90;

// Which cells of a map the ECU has told, and what came of them.
struct Reverted {
    std::size_t changed = 0;
    std::size_t neverRead = 0;
    std::vector<core::CellPlace> apart;  // cells in which the engine may run on another byte
};

std::string counted(std::size_t cells) {
    return std::to_string(cells) + (cells == 1 ? " cell" : " cells");
}

std::string wordsOf(const Reverted& reverted) {
    const std::string unread =
        reverted.neverRead == 0 ? "" : ", " + counted(reverted.neverRead) + " never read from the ECU";
    return (reverted.changed == 0 ? "Nothing to revert" : "Reverted " + counted(reverted.changed)) + unread;
}

Reverted revertCells(const MapContext& context, const MapPane::Target& target) {
    Reverted reverted;
    auto& edited = context.tables.*target.images.edited;
    const auto& ecu = context.connection.ecuMaps.*target.images.inEcu;
    for (int cell = target.cells.first; cell <= target.cells.last; ++cell) {
        const auto at = static_cast<std::size_t>(cell);
        const auto told = ecu.told(at);
        auto& byte = core::checked(edited, cell);
        reverted.neverRead += told ? 0 : 1;
        if (!told || *told == byte) {
            continue;
        }
        byte = *told;
        ++reverted.changed;
        if (ecu.working(at) != told || !context.connection.linkState.isHeard()) {
            reverted.apart.push_back({target.images.inHistory, at});
        }
    }
    return reverted;
}

core::Cause causeOf(const MapPane::Target& target) {
    using Kind = core::Cause::Kind;
    const auto [first, last] = target.cells;
    return core::Cause::cells(first == last ? Kind::RevertCell : Kind::RevertBlock, target.images.inHistory,
                              static_cast<std::size_t>(first), static_cast<std::size_t>(last));
}

// In a box that is typed into, the keys are those of its text. A cell is none, though it is unlocked while it is drawn.
bool isTypedInto(const PaneWindow& window) {
    const auto* const box = dynamic_cast<const controls::TextBox*>(window.activeControl());
    return box != nullptr && !box->Locked && window.paneWithFocus() == nullptr;
}

}  // namespace

std::optional<HistoryOrder> orderOf(int keyCode, int shift) {
    struct Key {
        int code;
        int shift;
        HistoryOrder order;
    };
    static constexpr Key kKeys[] = {{kZ, controls::kControlMask, HistoryOrder::Undo},
                                    {kY, controls::kControlMask, HistoryOrder::Redo},
                                    {kZ, controls::kControlMask | controls::kShiftMask, HistoryOrder::Redo},
                                    {controls::kKeyBackspace, controls::kControlMask, HistoryOrder::Revert},
                                    {kH, controls::kControlMask, HistoryOrder::List}};
    const auto* const key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                         [&](const Key& each) { return each.code == keyCode && each.shift == shift; });
    return key != std::end(kKeys) ? std::optional(key->order) : std::nullopt;
}

MapUndo::MapUndo(core::MapHistory& history, core::SharedTables& tables, link::ConnectionPanel& connection,
                 platform::EventPump& pump)
    : history_(history), follower_(tables, connection, pump) {}

void MapUndo::walk(std::size_t place, PaneWindow* window) {
    const auto reached = history_.goTo(place);
    if (window != nullptr) {
        follower_.follow(*window, reached);
    }
}

std::string MapUndo::undo(PaneWindow* window) {
    if (history_.isHeld()) {
        return core::MapHistory::kHeldText;
    }
    history_.look();
    const auto place = history_.place();
    if (place == 0) {
        return "Nothing to undo";
    }
    const std::string words = history_.step(place).words();
    walk(place - 1, window);
    return "Undone: " + words;
}

std::string MapUndo::redo(PaneWindow* window) {
    if (history_.isHeld()) {
        return core::MapHistory::kHeldText;
    }
    history_.look();
    const auto place = history_.place();
    if (place == history_.count()) {
        return "Nothing to redo";
    }
    const std::string words = history_.step(place + 1).words();
    walk(place + 1, window);
    return "Done again: " + words;
}

std::string MapUndo::goTo(std::size_t place, PaneWindow* window) {
    if (history_.isHeld()) {
        return core::MapHistory::kHeldText;
    }
    walk(place, window);
    return place == 0 ? "Before the first step" : "After: " + history_.step(place).words();
}

std::string MapUndo::revert(PaneWindow& window) {
    const auto target = window.revertTarget();
    if (history_.isHeld()) {
        return core::MapHistory::kHeldText;
    }
    if (!target) {
        return "Nothing to revert";
    }
    Reverted reverted;
    {
        const core::MapHistory::Change change(&history_, causeOf(*target));
        reverted = revertCells(window.context(), *target);
    }
    std::vector<core::CellPlace> sent;
    std::copy_if(reverted.apart.begin(), reverted.apart.end(), std::back_inserter(sent),
                 [&](const auto& place) { return follower_.reaches(window, place); });
    for (const auto& place : sent) {
        history_.reachedEngine(place);
    }
    follower_.follow(window, sent);
    return wordsOf(reverted);
}

void MapUndo::obey(HistoryOrder order, PaneWindow& window) {
    switch (order) {
        case HistoryOrder::Undo:
            window.HistoryNote = undo(&window);
            break;
        case HistoryOrder::Redo:
            window.HistoryNote = redo(&window);
            break;
        case HistoryOrder::Revert:
            window.HistoryNote = revert(window);
            break;
        case HistoryOrder::List:
            showList();
            break;
    }
}

bool MapUndo::takesKey(PaneWindow& window, int keyCode, int shift) {
    const auto order = isTypedInto(window) ? std::nullopt : orderOf(keyCode, shift);
    if (order) {
        obey(*order, window);
    }
    return order.has_value();
}

std::optional<std::string> MapUndo::walkBy(int keyCode, int shift, PaneWindow* window) {
    const auto order = orderOf(keyCode, shift);
    if (order == HistoryOrder::Undo) {
        return undo(window);
    }
    return order == HistoryOrder::Redo ? std::optional(redo(window)) : std::nullopt;
}

void MapUndo::showList() const {
    if (openList) {
        openList();
    }
}

}  // namespace korvane::maps
