// Which parameters a save writes, in their order.
#pragma once

#include <span>

#include "fields/Captions.h"
#include "fields/Field.h"

namespace korvane::fields {

// Waits for `ms` behind every `every`-th cell of a step, and behind its last one as `atEnd` says.
struct Pause {
    int ms = 0;
    int every = 1;
    bool atEnd = true;

    // 0 for no wait.
    [[nodiscard]] constexpr int behind(int cell, int cells) const {
        const bool waits = cell == cells - 1 ? atEnd : (cell + 1) % every == 0;
        return waits ? ms : 0;
    }
};

// All cells of the window's row for one parameter.
struct SaveStep {
    Address address;
    Pause pause = {};
    Percent percent = {};
    int betweenBytes = 0;  // ms, from the low to the high byte of two
};

struct SavePlan {
    std::span<const SaveStep> steps;
    bool stopsPoll = false;  // the poll is stopped from the press to the end
    Captions captions = {};
};

}  // namespace korvane::fields
