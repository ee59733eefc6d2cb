// The clock and the events of the real machine, on Qt's event loop.
#pragma once

#include <QEventLoop>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <set>

#include "platform/EventPump.h"

namespace korvane::platform {

// Lives on the thread of the QCoreApplication; needs no display. Alarms due at the same moment run in the order in
// which they were asked for, never early and never from inside callAt. One that is due at once runs at the event loop's
// next turn; a later one may come up to 1 ms late.
class QtPump : public EventPump {
public:
    QtPump();
    ~QtPump() override;
    QtPump(const QtPump&) = delete;
    QtPump& operator=(const QtPump&) = delete;

    [[nodiscard]] Micros now() const override;
    [[nodiscard]] WallTime wallTime() const override;

    void pump() override;
    void wait(int milliseconds) override;
    // Windows go on painting and devices are read; the user's input waits.
    void sleep(int milliseconds) override;
    // A message box that comes up meanwhile is not waited for.
    void whenSettled(std::function<void()> call, Micros patience) override;
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> call,
                                                   AlarmKind kind = AlarmKind::Program) override;

    // While one lives, program alarms keep still; each that falls due runs once afterwards. Painting, input and device
    // alarms go on. Holds nest.
    class Hold {
    public:
        explicit Hold(QtPump& pump);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        QtPump& pump_;
    };

private:
    class QtAlarm;
    class Waker;
    struct Entry {
        Micros due;
        std::uint64_t order;
        QtAlarm* alarm;
        bool operator<(const Entry& other) const { return due != other.due ? due < other.due : order < other.order; }
    };
    using Entries = std::set<Entry>;

    struct Settled {
        std::function<void()> call;
        Micros latest;
        int depth;  // of nested event loops when it was asked for
        int holds;
        std::unique_ptr<Alarm> alarm;
    };

    // Where the alarm stands that may run first; null when none may run.
    [[nodiscard]] const Entries* nextSource() const;
    [[nodiscard]] bool mayRun(AlarmKind kind) const;
    void runLoop(int milliseconds, QEventLoop::ProcessEventsFlags flags);
    void settle(std::list<Settled>::iterator settled);
    [[nodiscard]] bool isUnsettled(const Settled& settled) const;
    void schedule();
    void post();
    void deliver();
    // Runs the first alarm if it is due and was asked for before `before`; false if there is none.
    bool runNext(std::uint64_t before);

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    QTimer timer_;
    std::unique_ptr<Waker> waker_;
    Micros timerDue_ = 0;
    bool posted_ = false;
    int holds_ = 0;
    int depth_ = 0;  // of nested event loops
    std::uint64_t orders_ = 0;
    std::array<Entries, 3> entries_;  // by AlarmKind
    int sleeps_ = 0;
    std::list<Settled> settled_;
};

}  // namespace korvane::platform
