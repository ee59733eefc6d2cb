#include "keep/desk/DeskKeeper.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/TimeText.h"
#include "keep/point/PointDifference.h"
#include "platform/DebugLog.h"

namespace korvane::keep {

namespace {

constexpr auto kEnded = "The program ended without closing. ";

// What a read or a file has brought is in the ECU or in the file.
bool editsLargeMaps(const core::MapStep& step) {
    using Kind = core::Cause::Kind;
    return step.cause.kind != Kind::Read && step.cause.kind != Kind::File &&
           std::any_of(step.cells.begin(), step.cells.end(),
                       [](const auto& change) { return change.place().cell >= link::EcuMap::kHalf; });
}

std::string andMore(std::size_t count) {
    return count < 2 ? "." : ", and " + std::to_string(count - 1) + " more.";
}

}  // namespace

DeskKeeper::DeskKeeper(platform::Machine& machine, Keeper& keeper, core::MapHistory& history)
    : machine_(machine),
      keeper_(keeper),
      history_(history),
      store_(keeper.store().folder(), machine.toDisk),
      file_(store_, machine.toDisk, machine.hold),
      undone_(history),
      alarm_(machine.pump.makeAlarm([this] {
          waits_ = false;
          save();
      })) {
    history_.addObserver(*this);
    keeper_.notice().addObserver(*this);
    machine_.windows.unloaded = [this] {
        if (waits_) {
            save();
        }
    };
}

DeskKeeper::~DeskKeeper() {
    machine_.windows.unloaded = nullptr;
    keeper_.notice().removeObserver(*this);
    history_.removeObserver(*this);
}

void DeskKeeper::propertyChanged(controls::Object& object, const void* property) {
    if (&object == &history_) {
        edited();
        if (property != history_.mapsProperty()) {
            followUndone();
        }
    } else if (property == &keeper_.notice().Unfinished && keeper_.notice().Unfinished.get().empty()) {
        file_.told();
    }
}

void DeskKeeper::edited() {
    edited_ = true;
    const auto count = history_.count();
    usesLargeMaps_ = usesLargeMaps_ || (count > 0 && editsLargeMaps(history_.step(count)));
    arm();
}

void DeskKeeper::arm() {
    if (!waits_) {
        waits_ = true;
        alarm_->callAt(machine_.pump.now() + kDelay);
    }
}

// Of an ECU with small maps the other cells count as well if somebody has typed into them.
bool DeskKeeper::isUnstored(const Snapshot& desk) const {
    return usesLargeMaps_ ? hasUnstoredCells(desk) : hasUnstored(desk);
}

bool DeskKeeper::isKept(const Snapshot& known) const {
    return !edited_ || !isUnstored(known) || keeper_.hasDesk(known);
}

// As long as the desk has what the ECU has not stored it is looked at: the ECU may store it, and somebody may remove
// the file, or the point that has the desk.
void DeskKeeper::save() {
    const auto known = keeper_.now();
    keepUndone(known);
    if (isKept(known)) {
        file_.remove();
        tell({});
    } else {
        write(known);
    }
    waits_ = false;
    alarm_->cancel();
    if (edited_ && (isUnstored(known) || !undone_.desks().empty())) {
        arm();
    }
}

// What the ECU has now needs no point: the one before the next send has it.
void DeskKeeper::followUndone() {
    if (undone_.follow()) {
        const auto known = keeper_.now();
        undone_.dropIf([&](const UndoneDesks::Desk& desk) { return !isUnstored(withDesk(known, desk.maps)); });
    }
}

// What the ECU has stored, and what is on the desk again, is kept without a point.
void DeskKeeper::keepUndone(const Snapshot& known) {
    undone_.dropIf([&](const UndoneDesks::Desk& desk) {
        auto undone = withDesk(known, desk.maps);
        undone.reason = desk.reason;
        return !isUnstored(undone) || isSameDesk(undone, known) || keeper_.hasDesk(undone) ||
               keeper_.keepUndone(undone).empty();
    });
}

void DeskKeeper::write(const Snapshot& known) {
    if (!failed_ && file_.isThere() && isSameDesk(known, written_)) {
        return;
    }
    auto desk = known;
    desk.reason = "desk";
    const auto failure = file_.write(desk);
    tell(failure);
    written_ = known;
}

void DeskKeeper::tell(const std::string& failure) {
    keeper_.notice().cannotKeep(link::Kept::Desk, failure);
    if (!failure.empty() && !failed_) {
        machine_.log.write(failure);
    }
    failed_ = !failure.empty();
}

void DeskKeeper::programBegins() {
    const auto left = file_.takeLeft();
    if (left.points.empty() && left.failure.empty()) {
        return;
    }
    keeper_.refresh();
    std::optional<Snapshot> newest;
    std::string name;
    for (const auto& point : left.points) {
        auto found = store_.load(point).content;
        if (found && (!newest || newest->time <= found->time)) {
            newest = std::move(found);
            name = point;
        }
    }
    const auto text = newest ? "The maps of its desk are restore point " + core::dateText(newest->time) + ' ' +
                                   core::timeText(newest->time) + andMore(left.points.size())
                             : "What it has left of its desk can't be read.";
    keeper_.notice().unfinished(kEnded + (left.failure.empty() ? text : left.failure), name);
}

void DeskKeeper::programEnds() {
    file_.told();
    keepUndone(keeper_.now());
    if (!isKept(keeper_.now())) {
        keeper_.keepDesk("end of the program");
    }
    save();
}

// The keeper does it for an ECU that has told what it is.
void DeskKeeper::beforeReplacing(std::string_view what) {
    keeper_.beforeReplacing(what);
    if (const auto known = keeper_.now(); hasEdits(known) && !isKept(known)) {
        keeper_.keepDesk(std::string("before: ").append(what));
    }
}

}  // namespace korvane::keep
