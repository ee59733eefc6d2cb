#include "link/KeepWindows.h"

#include "controls/Control.h"

namespace korvane::link {

namespace {

const std::function<void()>* openerOf(const KeepWindows& windows, int keyCode) {
    constexpr int kD = 68;
    constexpr int kH = 72;
    constexpr int kL = 76;
    constexpr int kR = 82;
    switch (keyCode) {
        case kD:
            return &windows.compare;
        case kH:
            return &windows.history;
        case kL:
            return &windows.link;
        case kR:
            return &windows.restore;
        default:
            return nullptr;
    }
}

}  // namespace

bool KeepWindows::takesKey(int keyCode, int shift) const {
    const auto* const open = shift == controls::kControlMask ? openerOf(*this, keyCode) : nullptr;
    if (open == nullptr || !*open) {
        return false;
    }
    (*open)();
    return true;
}

}  // namespace korvane::link
