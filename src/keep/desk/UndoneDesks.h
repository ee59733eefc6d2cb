// The desks that an undo or a revert has left, until something keeps them.
#pragma once

#include <string>
#include <vector>

#include "core/history/MapHistory.h"
#include "keep/point/Snapshot.h"

namespace korvane::keep {

// The history has them too, but only as long as the program runs.
class UndoneDesks {
public:
    // `history` outlives the object.
    explicit UndoneDesks(const core::MapHistory& history) : history_(history) {}

    // For each change of the history: takes the desk behind the last step when the first of some steps is undone, and
    // the one before a revert. Whether it took one.
    bool follow();

    struct Desk {
        core::WorkingMaps maps;
        std::string reason;
    };
    // Oldest first; each state of the maps once.
    [[nodiscard]] const std::vector<Desk>& desks() const { return desks_; }
    // Those that need no keeping any more leave.
    template <class IsKept>
    void dropIf(IsKept isKept) {
        std::erase_if(desks_, isKept);
    }

private:
    bool take(std::size_t place, const char* reason);

    const core::MapHistory& history_;
    std::vector<Desk> desks_;
    bool isUndone_ = false;
};

// `known` with these maps on the desk.
[[nodiscard]] Snapshot withDesk(Snapshot known, const core::WorkingMaps& maps);

}  // namespace korvane::keep
