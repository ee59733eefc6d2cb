#include "platform/clsTimer.h"

#include <exception>
#include <string>

namespace korvane::platform {

clsTimer::clsTimer(EventPump& pump, DebugLog& log)
    : pump_(pump), log_(log), alarm_(pump.makeAlarm([this] { elapse(); })) {}

void clsTimer::StartTimer() {
    if (running_ || Interval <= 0) {
        return;
    }
    running_ = true;
    alarm_->callAt(pump_.now() + Interval * kMicrosPerMilli);
}

void clsTimer::StopTimer() {
    running_ = false;
    alarm_->cancel();
}

void clsTimer::elapse() {
    alarm_->callAt(pump_.now() + Interval * kMicrosPerMilli);
    // A copy: the handler may end the timer, and what follows must not touch it.
    const auto handler = TimerElapsed;
    DebugLog& log = log_;
    try {
        if (handler) {
            handler();
        }
    } catch (const std::exception& error) {
        log.write(std::string("clsTimer: ") + error.what());
    }
}

}  // namespace korvane::platform
