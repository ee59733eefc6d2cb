// Brings cells of the working maps to the running engine, as "Realtime changes" does.
#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "core/history/MapStep.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "maps/grid/RealtimeChanges.h"
#include "platform/EventPump.h"
#include "platform/Nesting.h"

namespace korvane::maps {

class PaneWindow;

class EngineFollower {
public:
    EngineFollower(core::SharedTables& tables, link::ConnectionPanel& connection, platform::EventPump& pump);

    // Sends what the maps have of these cells, one command a cell, as fast as the ECU takes them; events run meanwhile.
    // Nothing while the window's box "Realtime changes" is not ticked, the port is closed or a transfer has the line:
    // the cells then are edits that were not sent. Called again while cells wait, it adds to them and returns.
    void follow(PaneWindow& window, const std::vector<core::CellPlace>& cells);

    // Whether a cell could be sent now.
    [[nodiscard]] bool reaches(const PaneWindow& window, const core::CellPlace& place) const;

private:
    void sendWaiting(PaneWindow& window);
    [[nodiscard]] bool maySend(const PaneWindow& window) const;
    [[nodiscard]] int pauseLeft() const;
    void sendNext(const PaneWindow& window);

    core::SharedTables& tables_;
    link::ConnectionPanel& connection_;
    platform::EventPump& pump_;
    std::deque<core::CellPlace> waiting_;
    platform::Nesting sending_{1};
    std::int64_t lastSent_;  // ms
};

}  // namespace korvane::maps
