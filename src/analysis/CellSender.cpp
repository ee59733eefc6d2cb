#include "analysis/CellSender.h"

#include <algorithm>

#include "link/Commands.h"
#include "platform/RuntimeError.h"

namespace korvane::analysis {

namespace {

constexpr int kPause = static_cast<int>(link::cellCommand(0, 0, 0).size());  // ms: one for each byte
constexpr int kRetry = 20;
constexpr int kSilentRetry = 100;
constexpr std::int64_t kPatience = 2000;  // with a buffer that does not become empty

}  // namespace

CellSender::CellSender(core::MapImages& tables, link::ConnectionPanel& connection, core::MapHistory& history,
                       platform::EventPump& pump)
    : tables_(tables),
      connection_(connection),
      history_(history),
      pump_(pump),
      alarm_(pump.makeAlarm([this] { send(); })),
      lastSent_(pump.milliseconds() - kPause) {}

void CellSender::add(std::size_t cell) {
    if (isEmpty()) {
        lastRoom_ = pump_.milliseconds();
    }
    waiting_.set(cell);
    again_[cell] = again_[cell] || !isHeard();
}

bool CellSender::isHeard() const {
    return connection_.linkState.isHeard();
}

// Before the first frame of a connection nobody knows whether it takes them.
bool CellSender::takesCells() const {
    return isHeard() || connection_.linkState.state() == link::LinkState::State::Silent;
}

std::bitset<core::kMapSize> CellSender::sendable() const {
    return isHeard() ? waiting_ | again_ : takesCells() ? waiting_ : std::bitset<core::kMapSize>();
}

bool CellSender::isBlocked() {
    if (!takesCells() || connection_.MSComm1.OutBufferCount() == 0) {
        lastRoom_ = pump_.milliseconds();
    }
    return pump_.milliseconds() - lastRoom_ > kPatience;
}

void CellSender::send() {
    while (!isEmpty()) {
        if (!connection_.MSComm1.PortOpen()) {
            return drop();
        }
        if (isBlocked()) {
            return refuse();
        }
        if (const int pause = pauseLeft(); pause > 0) {
            return alarm_->callAt(pump_.now() + pause * platform::kMicrosPerMilli);
        }
        sendNext();
    }
}

int CellSender::pauseLeft() const {
    if (sendable().none()) {
        return kSilentRetry;
    }
    if (connection_.linkState.isBusy() || connection_.MSComm1.OutBufferCount() > 0) {
        return kRetry;
    }
    return kPause - static_cast<int>(std::min<std::int64_t>(pump_.milliseconds() - lastSent_, kPause));
}

void CellSender::sendNext() {
    std::size_t cell = 0;
    for (const auto cells = sendable(); !cells[cell];) {
        ++cell;
    }
    (waiting_[cell] ? waiting_ : again_).reset(cell);
    const auto byte = tables_.FuelMapOut.at(cell);
    try {
        connection_.MSComm1.Output(link::cellCommand(link::kFuelMap.changeCell, static_cast<std::uint8_t>(cell), byte));
    } catch (const platform::RuntimeError&) {
        return refuse();
    }
    lastSent_ = pump_.milliseconds();
    history_.reachedEngine({core::EditedMap::Fuel, cell});
    if (connection_.linkState.isHeard()) {
        connection_.ecuMaps.fuel.changed(cell, byte);
    }
}

void CellSender::refuse() {
    drop();
    if (refused) {
        refused();
    }
}

}  // namespace korvane::analysis
