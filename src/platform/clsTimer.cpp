#include "platform/clsTimer.h"

namespace korvane::platform {

clsTimer::clsTimer(EventPump& pump) : pump_(pump), alarm_(pump.makeAlarm([this] { elapse(); })) {}

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
    if (TimerElapsed) {
        TimerElapsed();
    }
}

}  // namespace korvane::platform
