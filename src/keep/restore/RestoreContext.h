// What the window of the restore points works with.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "keep/Keeper.h"
#include "keep/point/PointExport.h"
#include "keep/restore/RestoreRun.h"

namespace korvane::keep {

// Which parts of a point come back.
struct RestoreChoice {
    std::vector<MapSnapshot Snapshot::*> maps;
    MapFrom from = MapFrom::Ecu;
    bool settings = false;
};

// All of it outlives the windows.
struct RestoreContext {
    Keeper& keeper;
    // Brings maps into the working maps, as one step that can be undone, and has them drawn. Says why it has not.
    std::function<std::string(const Snapshot& point, const RestoreChoice& choice)> toDesk;
    // Opens the comparison of a point with the ECU.
    std::function<void(const std::string& name)> compare;
    RestoreRun& run;
    // The keys of undo and redo: what came of it in words, nothing for another key.
    std::function<std::optional<std::string>(int keyCode, int shift)> walkBy = {};
};

// That the point is of another type of ECU than the one on the line, as a sentence; empty if it is of the same, or no
// ECU has told its type.
[[nodiscard]] std::string otherTypeText(const Snapshot& point, const EcuIdentity& now);

// Brings the chosen parts back; what came of it, in words. Settings are written while events run.
[[nodiscard]] std::string restore(const RestoreContext& context, const std::string& name, const RestoreChoice& choice);

}  // namespace korvane::keep
