// Undo, redo and revert of the working maps, and the keys for them.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "maps/history/EngineFollower.h"

namespace korvane::maps {

class PaneWindow;

enum class HistoryOrder { Undo, Redo, Revert, List };

// Control and Z; control and Y, or control, shift and Z; control and backspace; control and H. Nothing for another key.
[[nodiscard]] std::optional<HistoryOrder> orderOf(int keyCode, int shift);

// One for the program. Where a step had reached the running engine by "Realtime changes", the engine follows while that
// box is ticked in the window from which the order comes; otherwise the cells are edits that were not sent. Every open
// map window draws what has changed.
class MapUndo {
public:
    MapUndo(core::MapHistory& history, core::SharedTables& tables, link::ConnectionPanel& connection,
            platform::EventPump& pump);

    // Each says what it has done in words. `window` may be null: nothing is sent then. While a map is being sent none
    // does anything, so that the ECU gets one state of the map.
    std::string undo(PaneWindow* window);
    std::string redo(PaneWindow* window);
    // RuntimeError 9 for a place that the history does not have.
    std::string goTo(std::size_t place, PaneWindow* window);
    // The selected block with the focus, or else the cell with it, becomes what the ECU sent when it was read last.
    // Cells that were never read stay.
    std::string revert(PaneWindow& window);

    // The window says what came of it.
    void obey(HistoryOrder order, PaneWindow& window);
    // Obeys the order that the key is; false if it is none. In a box that is typed into the keys are those of its text.
    [[nodiscard]] bool takesKey(PaneWindow& window, int keyCode, int shift);

    // Undoes or does again, if that is the key: what came of it. Nothing for another key. `window` may be null.
    std::optional<std::string> walkBy(int keyCode, int shift, PaneWindow* window);

    // Opens the list of the steps; set by who owns the window.
    std::function<void()> openList;
    void showList() const;
    // The map window that is in use, for orders that come from none; null if none is open.
    std::function<PaneWindow*()> currentWindow;

    [[nodiscard]] core::MapHistory& history() { return history_; }

private:
    void walk(std::size_t place, PaneWindow* window);

    core::MapHistory& history_;
    EngineFollower follower_;
};

}  // namespace korvane::maps
