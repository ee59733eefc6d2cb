#include "controls/clsTimer.h"

#include <exception>
#include <string>

namespace korvane::controls {

clsTimer::clsTimer(platform::EventPump& pump, platform::DebugLog& log)
    : pump_(pump), log_(log), alarm_(pump.makeAlarm([this] { elapse(); })) {}

void clsTimer::StartTimer() {
    if (running_ || Interval <= 0) {
        return;
    }
    running_ = true;
    alarm_->callAt(pump_.now() + Interval * platform::kMicrosPerMilli);
}

void clsTimer::StopTimer() {
    running_ = false;
    alarm_->cancel();
}

void clsTimer::elapse() {
    alarm_->callAt(pump_.now() + Interval * platform::kMicrosPerMilli);
    // A copy: the handler may delete the timer, and the code below must not use it then.
    const auto handler = TimerElapsed;
    platform::DebugLog& log = log_;
    try {
        if (handler) {
            handler();
        }
    } catch (const std::exception& error) {
        log.write(std::string("clsTimer: ") + error.what());
    }
}

}  // namespace korvane::controls
