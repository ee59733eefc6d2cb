// What the caption of a window says while its parameters are read or saved.
#pragma once

#include "controls/Window.h"

namespace korvane::fields {

// Null texts leave the caption as it is.
struct Captions {
    const char* underWay = nullptr;  // in front of the percentage
    const char* ended = nullptr;

    // A percentage below 0 is none.
    void showPercent(controls::Window& window, double percent) const;
    void showEnd(controls::Window& window) const;
};

// The percentage behind cell i is `first` + i * `step`.
struct Percent {
    double first = -1.0;
    double step = 0.0;

    [[nodiscard]] constexpr double behind(int cell) const { return first + cell * step; }
};

}  // namespace korvane::fields
