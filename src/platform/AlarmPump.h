// A pump's queue of alarms; what its clock is and when alarms run is the pump's.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/EventPump.h"

namespace korvane::platform {

// Alarms run in order of their moments, those of one moment in the order in which they were asked for, and each runs
// once. A call may cancel, move or delete any alarm, its own too.
class AlarmPump : public EventPump {
public:
    AlarmPump();
    ~AlarmPump() override;
    AlarmPump(const AlarmPump&) = delete;
    AlarmPump& operator=(const AlarmPump&) = delete;

    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> call,
                                                   AlarmKind kind = AlarmKind::Program) override;

protected:
    // Whether alarms of that kind may run now.
    [[nodiscard]] virtual bool mayRun(AlarmKind kind) const = 0;
    // An alarm has been asked for.
    virtual void asked() {}
    // An alarm that was due then has left the queue; its call comes next.
    virtual void starting(Micros due) = 0;

    class QueuedAlarm;
    struct Entry {
        Micros due;
        std::uint64_t order;
        QueuedAlarm* alarm;
        bool operator<(const Entry& other) const { return due != other.due ? due < other.due : order < other.order; }
    };

    // The alarm that runs first of those that may; null when there is none.
    [[nodiscard]] const Entry* first() const;
    // Whether one of that kind may run and is due.
    [[nodiscard]] bool isDue(AlarmKind kind) const;
    // Runs the first alarm if it is due by `limit` and was asked for before `before`; false if there is none.
    bool runFirst(Micros limit, std::uint64_t before);
    // Grows with each alarm that is asked for.
    [[nodiscard]] std::uint64_t orders() const { return orders_; }

private:
    // The first one last. There are few at any time, so that a sorted vector is faster than a tree.
    using Entries = std::vector<Entry>;

    std::uint64_t orders_ = 0;
    std::array<Entries, 3> entries_;  // by AlarmKind
};

}  // namespace korvane::platform
