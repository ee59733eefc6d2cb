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

bool UndoneDesks::follow() {
    const auto count = history_.count();
    const bool wasUndone = std::exchange(isUndone_, history_.place() < count);
    if (isUndone_) {
        return !wasUndone && take(count, "before: undo");
    }
    return count > 0 && isRevert(history_.step(count)) && take(count - 1, "before: revert");
}

bool UndoneDesks::take(std::size_t place, const char* reason) {
    auto maps = history_.mapsAt(place);
    const bool isNew = std::none_of(desks_.begin(), desks_.end(), [&](const Desk& desk) { return desk.maps == maps; });
    if (isNew) {
        desks_.push_back({std::move(maps), reason});
    }
    return isNew;
}

Snapshot withDesk(Snapshot known, const core::WorkingMaps& maps) {
    using core::EditedMap;
    known.fuel.edited = maps.at(static_cast<std::size_t>(EditedMap::Fuel));
    known.ignition.edited = maps.at(static_cast<std::size_t>(EditedMap::Ignition));
    known.pwm.edited = maps.at(static_cast<std::size_t>(EditedMap::Pwm));
    return known;
}

}  // namespace korvane::keep
