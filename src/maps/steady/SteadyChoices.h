// What the tuner allows the steady agent, remembered.
#pragma once

#include <array>
#include <cstddef>

#include "controls/Property.h"
#include "platform/PreferencesStore.h"

namespace korvane::maps {

// Observers are told of each change, which is stored at once.
class SteadyChoices : public controls::Object {
public:
    static constexpr double kMostAuthority = 50.0;  // per cent
    static constexpr double kLongestDelay = 2000.0;
    static constexpr std::size_t kZones = 4;  // of load, as the agent has them

    // Begins as remembered: 15 per cent richer, 5 per cent leaner, nothing carried, no delay fixed.
    explicit SteadyChoices(platform::PreferencesStore& preferences);

    // How far a cell may go from the baseline, per cent, 0 to kMostAuthority.
    controls::Property<double> RichAuthority;
    controls::Property<double> LeanAuthority;
    // From the next start of the agent on: whether a correction that is certain is carried to close neighbours.
    controls::Property<bool> Carry;
    // The delay of lambda in each zone of load as the tuner has fixed it, ms; 0: the agent finds it out.
    std::array<controls::Property<double>, kZones> FixedDelayMs;

private:
    void afterChange(const void* property) override;

    platform::PreferencesStore& preferences_;
};

}  // namespace korvane::maps
