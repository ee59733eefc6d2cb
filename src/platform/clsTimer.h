// A timer without a window.
#pragma once

#include <functional>
#include <memory>

#include "platform/EventPump.h"

namespace korvane::platform {

// Raises TimerElapsed every Interval milliseconds from StartTimer until StopTimer or its end. Starting one that runs
// does nothing, nor does starting one whose Interval is not above zero.
class clsTimer {  // NOLINT(readability-identifier-naming)
public:
    explicit clsTimer(EventPump& pump);

    int Interval = 0;
    std::function<void()> TimerElapsed;

    void StartTimer();
    void StopTimer();
    [[nodiscard]] bool isRunning() const { return running_; }

private:
    void elapse();

    EventPump& pump_;
    std::unique_ptr<Alarm> alarm_;
    bool running_ = false;
};

}  // namespace korvane::platform
