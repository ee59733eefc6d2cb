// Sends cells of the working fuel map to the running engine, one after the other, no faster than the ECU takes them.
#pragma once

#include <bitset>
#include <functional>
#include <memory>

#include "core/history/MapHistory.h"
#include "core/tables/MapImages.h"
#include "link/ConnectionPanel.h"
#include "platform/EventPump.h"

namespace korvane::analysis {

// Each cell goes out with the byte that the map has then. Waits while a transfer has the line, and while the ECU is
// late. What was added while the ECU was not heard goes out twice, once more when it is heard at the latest. With the
// port closed nothing is sent and nothing waits.
class CellSender {
public:
    CellSender(core::MapImages& tables, link::ConnectionPanel& connection, core::MapHistory& history,
               platform::EventPump& pump);

    void add(std::size_t cell);
    // Sends what may be sent now, and goes on by itself.
    void send();
    [[nodiscard]] bool isEmpty() const { return (waiting_ | again_).none(); }
    // Cells wait for an ECU that does not answer.
    [[nodiscard]] bool isHeldUp() const { return !isEmpty() && connection_.MSComm1.PortOpen() && !isHeard(); }

    // The line takes nothing any more; what waited is dropped.
    std::function<void()> refused;

private:
    [[nodiscard]] bool isHeard() const;
    [[nodiscard]] bool takesCells() const;
    [[nodiscard]] std::bitset<core::kMapSize> sendable() const;
    [[nodiscard]] int pauseLeft() const;
    [[nodiscard]] bool isBlocked();
    void sendNext();
    void refuse();
    void drop() {
        waiting_.reset();
        again_.reset();
    }

    core::MapImages& tables_;
    link::ConnectionPanel& connection_;
    core::MapHistory& history_;
    platform::EventPump& pump_;
    std::unique_ptr<platform::Alarm> alarm_;
    std::bitset<core::kMapSize> waiting_;
    std::bitset<core::kMapSize> again_;  // to be sent once more, as soon as it is heard
    std::int64_t lastSent_ = 0;          // ms
    std::int64_t lastRoom_ = 0;          // ms; the line's buffer was empty then
};

}  // namespace korvane::analysis
