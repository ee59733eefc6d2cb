// The window of the restore points, and what it works with.
#pragma once

#include <string>

#include "controls/WindowShelf.h"
#include "keep/restore/RestoreContext.h"
#include "maps/transfer/MapContext.h"
#include "platform/Machine.h"
#include "program/Comparisons.h"

namespace korvane::program {

// One window at a time, made anew for each opening.
class RestorePoints {
public:
    RestorePoints(platform::Machine& machine, const maps::MapContext& maps, keep::Keeper& keeper, keep::RestoreRun& run,
                  Comparisons& comparisons);

    void open();
    // With this point picked, if there is one.
    void openAt(const std::string& name);
    // What a point has against what the ECU has now.
    void compare(const std::string& name);
    void unload() { shelf_.unloadAll(); }

    [[nodiscard]] const keep::RestoreContext& context() const { return context_; }

private:
    [[nodiscard]] std::string toDesk(const keep::Snapshot& point, const keep::RestoreChoice& choice) const;

    platform::Machine& machine_;
    const maps::MapContext& maps_;
    Comparisons& comparisons_;
    keep::RestoreContext context_;
    controls::WindowShelf shelf_;
};

}  // namespace korvane::program
