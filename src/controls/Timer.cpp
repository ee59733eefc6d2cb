#include "controls/Timer.h"

#include <array>

#include "platform/Machine.h"

namespace korvane::controls {

namespace {
constexpr std::array kTimer{property<&Timer::Interval>("Interval")};
}

Timer::Timer(Window& window, std::string_view name, bool enabled, int interval)
    : Control(window, name), pump_(window.machine().pump), alarm_(pump_.makeAlarm([this] { fire(); })) {
    Enabled = enabled;
    Interval = interval;
    arm();
}

void Timer::restart(int interval) {
    Interval = interval;
    Enabled = true;
    arm();
}

void Timer::afterChange(const void* property) {
    if (alarm_ && (property == &Enabled || property == &Interval)) {
        arm();
    }
}

void Timer::arm() {
    if (!Enabled || Interval <= 0) {
        alarm_->cancel();
        return;
    }
    due_ = pump_.now() + Interval * platform::kMicrosPerMilli;
    alarm_->callAt(due_);
}

void Timer::fire() {
    const platform::Micros interval = Interval * platform::kMicrosPerMilli;
    due_ = due_ + interval > pump_.now() ? due_ + interval : pump_.now() + interval;
    alarm_->callAt(due_);
    if (window().isLoaded()) {
        raise(Tick);
    }
}

std::vector<std::span<const PropertyInfo>> Timer::propertyTables() const {
    return withTable<Control>(*this, kTimer);
}

}  // namespace korvane::controls
