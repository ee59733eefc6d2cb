// What each window is for and which keys it has: the source of its title, its help and the keys that all windows share.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Window.h"

namespace korvane::views {

struct KeyHelp {
    std::string_view keys;
    std::string_view what;
};

enum class EscapeKey { Nothing, ClosesWindow, BackToMap };

struct WindowGuide {
    std::string_view window;  // its name
    std::string_view title;   // empty where the caption alone says enough
    std::string_view purpose;
    EscapeKey escape = EscapeKey::Nothing;
    std::span<const std::string_view> reads;  // paths of the buttons that "read again" presses, in this order
    std::string_view readSends;               // what they send
    std::span<const KeyHelp> keys;            // beside those of all windows
};

// Null for a window that nobody has described.
[[nodiscard]] const WindowGuide* guideOf(std::string_view window);
[[nodiscard]] std::span<const WindowGuide> windowGuides();

// The keys of the window, then those of all windows.
[[nodiscard]] std::vector<KeyHelp> keysOf(const WindowGuide& guide);

// The window's title before its caption; once, if the caption contains it.
[[nodiscard]] std::string titleOf(std::string_view window, const std::string& caption);

// Presses the window's read buttons, those that a user could press now. A handler may close the window: the others are
// not pressed then.
void readAgain(controls::Window& window);

}  // namespace korvane::views
