#include "program/RestorePoints.h"

#include <memory>

#include "core/history/MapHistory.h"
#include "keep/restore/FrmRestore.h"
#include "maps/history/MapUndo.h"

namespace korvane::program {

RestorePoints::RestorePoints(platform::Machine& machine, const maps::MapContext& maps, keep::Keeper& keeper,
                             keep::RestoreRun& run, Comparisons& comparisons)
    : machine_(machine),
      maps_(maps),
      comparisons_(comparisons),
      context_{.keeper = keeper,
               .toDesk = [this](const keep::Snapshot& point,
                                const keep::RestoreChoice& choice) { return toDesk(point, choice); },
               .compare = [this](const std::string& name) { compare(name); },
               .run = run},
      shelf_(machine.pump) {
    if (maps.undo != nullptr) {
        context_.walkBy = [&maps](int keyCode, int shift) { return maps.undo->walkBy(keyCode, shift, nullptr); };
    }
}

void RestorePoints::open() {
    openAt({});
}

void RestorePoints::openAt(const std::string& name) {
    auto& window =
        shelf_.one<keep::FrmRestore>([this] { return std::make_unique<keep::FrmRestore>(machine_, context_); });
    window.show();
    window.pick(name);
}

void RestorePoints::compare(const std::string& name) {
    using Kind = keep::Source::Kind;
    comparisons_.open({Kind::PointEcu, name}, {Kind::Ecu, {}});
}

std::string RestorePoints::toDesk(const keep::Snapshot& point, const keep::RestoreChoice& choice) const {
    if (maps_.history != nullptr && maps_.history->isHeld()) {
        return core::MapHistory::kHeldText;
    }
    maps_.announceReplacing("maps restored");
    const core::MapHistory::Change step(maps_.history, {.kind = core::Cause::Kind::Restore});
    for (const auto map : choice.maps) {
        auto& desk = map == &keep::Snapshot::fuel       ? maps_.tables.FuelMapOut
                     : map == &keep::Snapshot::ignition ? maps_.tables.IgnMapOut
                                                        : maps_.tables.PwmMapOut;
        keep::bringBack(point, map, choice.from, desk);
    }
    return {};
}

}  // namespace korvane::program
