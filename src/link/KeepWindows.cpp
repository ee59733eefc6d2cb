#include "link/KeepWindows.h"

#include "controls/Control.h"

namespace korvane::link {

bool KeepWindows::takesKey(int keyCode, int shift) const {
    constexpr int kD = 68;
    constexpr int kR = 82;
    const auto& open = keyCode == kD ? compare : restore;
    if ((keyCode != kD && keyCode != kR) || shift != controls::kControlMask || !open) {
        return false;
    }
    open();
    return true;
}

}  // namespace korvane::link
