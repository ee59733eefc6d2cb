#include "keep/desk/UndoneDesks.h"

#include <algorithm>
#include <utility>

namespace korvane::keep {

namespace {

using Kind = core::Cause::Kind;

bool isRevert(const core::MapStep& step) {
    return step.cause.kind == Kind::RevertCell || step.cause.kind == Kind::RevertBlock;
}

}  // namespace

void UndoneDesks::follow() {
    const auto count = history_.count();
    const bool isUndone = history_.place() < count;
    if (isUndone && !isUndone_) {
        take(count, "before: undo");
    } else if (!isUndone && count > 0 && isRevert(history_.step(count))) {
        take(count - 1, "before: revert");
    }
    isUndone_ = isUndone;
}

void UndoneDesks::take(std::size_t place, const char* reason) {
    auto maps = history_.mapsAt(place);
    if (std::none_of(desks_.begin(), desks_.end(), [&](const Desk& desk) { return desk.maps == maps; })) {
        desks_.push_back({std::move(maps), reason});
    }
}

Snapshot withDesk(Snapshot known, const core::WorkingMaps& maps) {
    using core::EditedMap;
    known.fuel.edited = maps.at(static_cast<std::size_t>(EditedMap::Fuel));
    known.ignition.edited = maps.at(static_cast<std::size_t>(EditedMap::Ignition));
    known.pwm.edited = maps.at(static_cast<std::size_t>(EditedMap::Pwm));
    return known;
}

}  // namespace korvane::keep
