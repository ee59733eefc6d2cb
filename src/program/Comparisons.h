// The window that compares, and what it works with.
#pragma once

#include <optional>

#include "controls/WindowShelf.h"
#include "keep/compare/CompareContext.h"
#include "keep/compare/Source.h"
#include "keep/point/PointStore.h"
#include "maps/transfer/MapContext.h"
#include "platform/Machine.h"
#include "program/MapWindows.h"
#include "settings/FrmMisc.h"

namespace korvane::program {

// One window at a time, made anew for each opening.
class Comparisons {
public:
    Comparisons(platform::Machine& machine, const maps::MapContext& maps, settings::FrmMisc& frmMisc,
                MapWindows& mapWindows);

    // The restore points can be compared too from now on; `points` outlives this.
    void usePoints(const keep::PointStore& points);

    // What the steady agent proposed last; nothing before it has.
    void useProposal(const std::optional<keep::Side>& proposal) {
        context_.proposal = [&proposal] { return proposal; };
    }

    // The ECU with the working maps; the open window comes to the front as it is.
    void open();
    void open(const keep::Source& left, const keep::Source& right);
    void unload() { shelf_.unloadAll(); }

private:
    [[nodiscard]] keep::Snapshot now() const;
    [[nodiscard]] keep::ReadBefore before() const;
    std::string copy(std::size_t map, int first, int last, const keep::CompareContext::Change& change);

    platform::Machine& machine_;
    const maps::MapContext& maps_;
    keep::CompareContext context_;
    controls::WindowShelf shelf_;
};

}  // namespace korvane::program
