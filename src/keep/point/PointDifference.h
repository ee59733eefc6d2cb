// How far two restore points agree.
#pragma once

#include "keep/point/Snapshot.h"

namespace korvane::keep {

// Two of the same type and version can't be told apart.
[[nodiscard]] bool isSameEcu(const EcuIdentity& one, const EcuIdentity& other);

// Cells that are known in both and are not the same: what the ECU runs on of its maps; and of the settings, the misc
// block included, those that keep no map.
struct PointDifference {
    int mapCells = 0;
    int settings = 0;

    [[nodiscard]] int total() const { return mapCells + settings; }
    friend bool operator==(const PointDifference&, const PointDifference&) = default;
};
[[nodiscard]] PointDifference differenceOf(const Snapshot& one, const Snapshot& other);

// How many of the settings that differenceOf() counts were sent to the ECU and not read back: it may have them or not.
[[nodiscard]] int notReadBack(const Snapshot& point, const Snapshot& now);

// The same of a point and what the ECU has now. A map counts as unchanged, too, if the ECU has it exactly as the tuner
// had it on the desk then: it is what the tuner has sent.
[[nodiscard]] PointDifference changesSince(const Snapshot& point, const Snapshot& now);

// Whether anything that differenceOf() looks at is known in both.
[[nodiscard]] bool shares(const Snapshot& one, const Snapshot& other);

// "12 map cells and 1 setting"; "nothing" for no difference.
[[nodiscard]] std::string wordsOf(const PointDifference& difference);

// Whether `point` has all that is known in `now`, and nothing of it in another way. A map on the desk counts as known
// unless all its cells are 0.
[[nodiscard]] bool covers(const Snapshot& point, const Snapshot& now);

// Whether a map on the desk is another than the one on which the ECU runs.
[[nodiscard]] bool hasEdits(const Snapshot& now);
// The same of what the ECU has stored, as far as the maps of its type go; of no type yet, of all cells.
[[nodiscard]] bool hasUnstored(const Snapshot& now);
// Of all cells, whatever its type.
[[nodiscard]] bool hasUnstoredCells(const Snapshot& now);
[[nodiscard]] bool isSameDesk(const Snapshot& one, const Snapshot& other);

// Whether `point` has the maps on the desk of `now`, as in covers().
[[nodiscard]] bool coversDesk(const Snapshot& point, const Snapshot& now);

}  // namespace korvane::keep
