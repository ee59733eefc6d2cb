// Where a window opens on the screens. All measures are in logical pixels and those of windows include their frames.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace korvane::controls {

struct Area {
    int left = 0, top = 0, width = 0, height = 0;

    [[nodiscard]] int right() const { return left + width; }
    [[nodiscard]] int bottom() const { return top + height; }
    friend bool operator==(const Area&, const Area&) = default;
};

struct Opening {
    int width = 0, height = 0;       // what the window wants
    std::optional<Area> remembered;  // where it was when it was closed last
    std::optional<Area> parent;      // the window from which it is opened
    std::vector<Area> screens;       // what is usable of each, the first screen first
    std::vector<Area> others;        // the windows that are open
};

// Inside one screen and never larger than it. A remembered place counts, in the screen that has most of it. A window
// without one opens on its parent's screen: at the side of the parent where it covers least of it, the right one first;
// without a parent in the middle of the first screen. No window covers the upper left corner of another one that is
// open as long as the screen has room beside it. With no screen the window gets what it wants.
[[nodiscard]] Area placeOf(const Opening& opening);

// Screens by size and position, as a text. A place that was remembered under another text means nothing any more.
[[nodiscard]] std::string signatureOf(std::span<const Area> screens);

}  // namespace korvane::controls
