// The windows that are opened from all others by a key.
#pragma once

#include <functional>

namespace korvane::link {

// Set by who owns the windows; one that is not set can't be opened.
struct KeepWindows {
    std::function<void()> compare;  // Control and D
    std::function<void()> restore;  // Control and R
    std::function<void()> history;  // Control and H
    std::function<void()> link;     // Control and L

    // True if the key opens one of them.
    [[nodiscard]] bool takesKey(int keyCode, int shift) const;
};

}  // namespace korvane::link
