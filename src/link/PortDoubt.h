// Whether there is a reason to test the port.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "controls/Property.h"
#include "link/LinkState.h"
#include "platform/EventPump.h"

namespace korvane::link {

// From a connect that failed, or five seconds of silence on an open line, until a live frame comes. Time in which
// nothing was asked is no silence.
class PortDoubt : public controls::Object, private controls::Observer {
public:
    static constexpr platform::Micros kLongSilence = 5 * platform::kMicrosPerSecond;

    PortDoubt(platform::EventPump& pump, LinkState& state);
    ~PortDoubt() override;

    controls::Property<bool> Shown{*this};

    void connectFailed() { Shown = true; }

    // For scripts: "shown", read only.
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

    // Opens the window that tests the port; set by who owns it.
    std::function<void()> test;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    [[nodiscard]] bool isSilent() const;
    void look();

    platform::EventPump& pump_;
    LinkState& state_;
    std::unique_ptr<platform::Alarm> look_;
};

}  // namespace korvane::link
