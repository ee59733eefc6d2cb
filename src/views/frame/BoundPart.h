// What a binder keeps up to date: the widget of one control, or of many.
#pragma once

#include <unordered_set>

#include "controls/Control.h"

namespace korvane::views {

using ControlSet = std::unordered_set<const controls::Control*>;

class BoundPart {
public:
    BoundPart() = default;
    BoundPart(const BoundPart&) = delete;
    BoundPart& operator=(const BoundPart&) = delete;
    virtual ~BoundPart() = default;

    // Brings the widget up to date.
    virtual void show() = 0;
    // The palette has changed under colours that were taken from it.
    virtual void showColorsAgain() = 0;
    // The window is going. A control that is not `alive` is destroyed already; no control is used from now on.
    virtual void detach(const ControlSet& alive) = 0;
};

}  // namespace korvane::views
