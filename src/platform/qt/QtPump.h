// The clock and the events of the real machine, on Qt's event loop.
#pragma once

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>
#include <list>
#include <memory>

#include "platform/AlarmPump.h"

namespace korvane::platform {

// Belongs to the thread of the QCoreApplication; needs no display. Alarms never run early and never from inside callAt.
// One that is due at once runs at the event loop's next turn; a later one may come up to 1 ms late.
class QtPump : public AlarmPump {
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
    // Does not wait for a message box that is shown meanwhile.
    void whenSettled(std::function<void()> call, Micros patience) override;

    // While one exists, program alarms do not run; each that falls due runs once afterwards. Painting, input and device
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
    class Waker;
    struct Settled {
        std::function<void()> call;
        Micros latest;
        int depth;  // of nested event loops when it was asked for
        int holds;
        std::unique_ptr<Alarm> alarm;
    };

    [[nodiscard]] bool mayRun(AlarmKind kind) const override;
    void asked() override { schedule(); }
    // The call may nest an event loop, which has to go on with the alarms that are left.
    void starting(Micros) override { schedule(); }
    void runLoop(int milliseconds, QEventLoop::ProcessEventsFlags flags);
    void settle(std::list<Settled>::iterator settled);
    [[nodiscard]] bool isUnsettled(const Settled& settled) const;
    void schedule();
    void post();
    void deliver();

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    QTimer timer_;
    std::unique_ptr<Waker> waker_;
    Micros timerDue_ = 0;
    bool posted_ = false;
    int holds_ = 0;
    int depth_ = 0;  // of nested event loops
    int sleeps_ = 0;
    std::list<Settled> settled_;
};

}  // namespace korvane::platform
