#include "maps/history/EngineFollower.h"

#include <algorithm>

#include "link/Commands.h"
#include "maps/grid/MapImages.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

constexpr int kBytePause = 1;  // ms; as for the bytes of a whole map
constexpr int kPause = kBytePause * static_cast<int>(link::cellCommand(0, 0, 0).size());

// Of the maps that have a command for a single cell of the running engine.
const link::MapCommands* commandsOf(core::EditedMap map) {
    return map == core::EditedMap::Fuel       ? &link::kFuelMap
           : map == core::EditedMap::Ignition ? &link::kIgnitionMap
                                              : nullptr;
}

link::EcuMap& ecuMapOf(link::EcuMaps& maps, core::EditedMap map) {
    return map == core::EditedMap::Fuel ? maps.fuel : maps.ignition;
}

}  // namespace

EngineFollower::EngineFollower(core::SharedTables& tables, link::ConnectionPanel& connection, platform::EventPump& pump)
    : tables_(tables), connection_(connection), pump_(pump), lastSent_(pump.milliseconds() - kPause) {}

void EngineFollower::follow(PaneWindow& window, const std::vector<core::CellPlace>& cells) {
    for (const auto& cell : cells) {
        if (std::find(waiting_.begin(), waiting_.end(), cell) == waiting_.end()) {
            waiting_.push_back(cell);
        }
    }
    if (const platform::Nesting::Level level(sending_); level) {
        sendWaiting(window);
    }
}

// The port, the box and the window may have changed with each wait.
void EngineFollower::sendWaiting(PaneWindow& window) {
    const controls::Window::Stay stay(window);
    while (!waiting_.empty() && maySend(window)) {
        if (const int pause = pauseLeft(); pause > 0) {
            pump_.wait(pause);
        } else {
            sendNext(window);
        }
    }
    waiting_.clear();
}

bool EngineFollower::maySend(const PaneWindow& window) const {
    return window.chkOnlineChanges.Value == 1 && connection_.MSComm1.PortOpen() && !connection_.linkState.isBusy();
}

bool EngineFollower::reaches(const PaneWindow& window, const core::CellPlace& place) const {
    return maySend(window) && commandsOf(place.map) != nullptr && place.cell <= RealtimeChanges::kLastCell;
}

int EngineFollower::pauseLeft() const {
    const int left = kPause - static_cast<int>(std::min<std::int64_t>(pump_.milliseconds() - lastSent_, kPause));
    return connection_.MSComm1.OutBufferCount() > 0 ? std::max(left, kBytePause) : left;
}

void EngineFollower::sendNext(const PaneWindow& window) {
    const auto place = waiting_.front();
    waiting_.pop_front();
    const auto* const commands = commandsOf(place.map);
    const std::uint8_t byte = core::workingMap(tables_, place.map)[place.cell];
    const RealtimeChanges realtime(window.chkOnlineChanges, connection_.MSComm1);
    if (commands != nullptr && realtime.send(commands->changeCell, static_cast<int>(place.cell), byte)) {
        lastSent_ = pump_.milliseconds();
        if (connection_.linkState.isHeard()) {
            ecuMapOf(connection_.ecuMaps, place.map).changed(place.cell, byte);
        }
    }
}

}  // namespace korvane::maps
