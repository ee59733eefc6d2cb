// A window's timer.
#pragma once

#include <memory>

#include "controls/Control.h"
#include "platform/EventPump.h"

namespace korvane::controls {

// Ticks every Interval milliseconds while Enabled; an Interval of 0 never ticks. Switching it on or changing the
// Interval starts the count anew. Ticks that could not be served in time are dropped, not caught up, and a
// window that is not loaded gets none.
class Timer : public Control {
public:
    Timer(Window& window, std::string_view name, bool enabled, int interval);

    Property<int> Interval{*this};
    Event<> Tick;

    // Switches it on with this interval and counts anew from now, also when it is running already.
    void restart(int interval);

    [[nodiscard]] std::string_view kind() const override { return "timer"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Enabled"; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;

private:
    void arm();
    void fire();

    platform::EventPump& pump_;
    platform::Micros due_ = 0;
    std::unique_ptr<platform::Alarm> alarm_;
};

}  // namespace korvane::controls
