// A small button that opens another window and is no control of its own.
#pragma once

#include <QToolButton>

#include <functional>

#include "views/frame/Binder.h"

namespace korvane::views {

struct OpenButton {
    const char* name;  // of the widget
    const char* words;
    const char* toolTip;
};

// The button of the comparison, in all windows that have it.
inline constexpr OpenButton kCompareButton{
    "compare", "Compare",
    "Shows what differs between the ECU, the working maps, tunes, images and restore points (Ctrl+D)"};

inline constexpr OpenButton kRestoreButton{"restore", "Points",
                                           "Lists the restore points, and brings one back (Ctrl+R)"};

// `open` is called as something that the user has done in the binder's view.
[[nodiscard]] QToolButton& makeOpenButton(const OpenButton& button, Binder& binder, QWidget* parent,
                                          std::function<void()> open);

}  // namespace korvane::views
