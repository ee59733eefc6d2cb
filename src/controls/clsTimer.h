// A timer that belongs to no window.
#pragma once

#include <functional>
#include <memory>

#include "platform/DebugLog.h"
#include "platform/EventPump.h"

namespace korvane::controls {

// Raises TimerElapsed every Interval milliseconds from StartTimer until StopTimer or its end. Starting one that runs
// does nothing, nor does starting one whose Interval is not above zero.
class clsTimer {  // NOLINT(readability-identifier-naming)
public:
    // A failure of the handler ends its event with a line in `log`.
    clsTimer(platform::EventPump& pump, platform::DebugLog& log);
    clsTimer(const clsTimer&) = delete;
    clsTimer& operator=(const clsTimer&) = delete;
    ~clsTimer() { StopTimer(); }

    int Interval = 0;
    std::function<void()> TimerElapsed;

    void StartTimer();
    void StopTimer();
    [[nodiscard]] bool isRunning() const { return running_; }

private:
    void elapse();

    platform::EventPump& pump_;
    platform::DebugLog& log_;
    std::unique_ptr<platform::Alarm> alarm_;
    bool running_ = false;
};

}  // namespace korvane::controls
