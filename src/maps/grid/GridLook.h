// How the grids of a map window look beside what their cells say: what the tuner has chosen, remembered.
#pragma once

#include "controls/Object.h"
#include "controls/Property.h"
#include "platform/PreferencesStore.h"

namespace korvane::maps {

class GridLook : public controls::Object {
public:
    // Begins as remembered; nothing is on that was never chosen. A change is stored at once.
    explicit GridLook(platform::PreferencesStore& preferences);

    controls::Property<bool> HeatTint;      // a bar in each cell, by how high its number is
    controls::Property<bool> AlignNumbers;  // at the decimal point

private:
    void afterChange(const void* property) override;

    platform::PreferencesStore& preferences_;
};

}  // namespace korvane::maps
