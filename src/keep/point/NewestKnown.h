// What points know of an ECU, each thing as the newest of them has it that knows it.
#pragma once

#include <array>
#include <bitset>

#include "keep/point/Snapshot.h"

namespace korvane::keep {

// A map and the misc block count as one thing each, every cell of the EEPROM as another.
class NewestKnown {
public:
    // Of the points, the newest first: takes out of each what a newer one has known.
    void takeOut(Snapshot& point);
    // Whether the points have known all that is known in `now`.
    [[nodiscard]] bool hasAll(const Snapshot& now) const;

private:
    std::array<bool, 3> maps_{};
    bool misc_ = false;
    std::bitset<core::kEepromSize> cells_;
};

}  // namespace korvane::keep
