// Whether what was received is still of the moment.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "controls/Object.h"
#include "controls/Property.h"
#include "platform/EventPump.h"

namespace korvane::live {

class Freshness : public controls::Object {
public:
    // Longer than any poll.
    static constexpr platform::Micros kLasts = 1000 * platform::kMicrosPerMilli;

    explicit Freshness(platform::EventPump& pump);

    // From each arrival on, for kLasts.
    controls::Property<bool> Fresh{*this, false};
    void arrived();

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    platform::EventPump& pump_;
    platform::Micros last_ = 0;
    std::unique_ptr<platform::Alarm> look_;

    void look();
};

}  // namespace korvane::live
