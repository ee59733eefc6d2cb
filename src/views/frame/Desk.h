// Gives windows their size and place on the real screens, and remembers both.
#pragma once

#include <QSize>

#include "controls/PlaceMemory.h"

namespace korvane::views {

class WindowView;

// What decides is controls::placeOf; this only asks the toolkit for the screens and for the windows that are open.
class Desk {
public:
    // Without a memory each window opens as if it were new.
    explicit Desk(controls::PlaceMemory* memory) : memory_(memory) {}

    // Before the window is first on the screen. `wanted` is without its frame.
    void place(WindowView& view, QSize wanted) const;
    // Gives a window that is on the screen this size where it is, as far as its screen has room for it and its frame.
    void fit(WindowView& view, QSize wanted) const;
    // The window is going.
    void keep(const WindowView& view) const;

private:
    controls::PlaceMemory* memory_;
};

}  // namespace korvane::views
