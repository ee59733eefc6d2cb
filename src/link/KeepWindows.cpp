#include "link/KeepWindows.h"

#include "controls/Control.h"

namespace korvane::link {

bool KeepWindows::takesKey(int keyCode, int shift) const {
    constexpr int kD = 68;
    if (keyCode != kD || shift != controls::kControlMask || !compare) {
        return false;
    }
    compare();
    return true;
}

}  // namespace korvane::link
