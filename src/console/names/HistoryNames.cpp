// The history of the working maps; declared in Registry.h.
#include "console/ConsoleError.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "core/TimeText.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using core::MapHistory;

constexpr int kMostSteps = 1'000'000;  // more than fit into a history

// What a script has changed by now is a step as well.
const MapHistory& lookedAt(MapHistory& history) {
    history.look();
    return history;
}

[[noreturn]] void raiseNoStep(const MapHistory& history) {
    throw ConsoleError(history.count() == 0 ? "there is no step"
                                            : "the last step is " + std::to_string(history.count()));
}

const core::MapStep& stepAt(MapHistory& history, int number) {
    if (std::cmp_greater(number, lookedAt(history).count())) {
        raiseNoStep(history);
    }
    return history.step(static_cast<std::size_t>(number));
}

maps::PaneWindow* windowOf(const maps::MapUndo& undo) {
    return undo.currentWindow ? undo.currentWindow() : nullptr;
}

std::string goTo(maps::MapUndo& undo, int place) {
    const auto count = lookedAt(undo.history()).count();
    if (place < 0 || std::cmp_greater(place, count)) {
        raiseNoStep(undo.history());
    }
    return undo.goTo(static_cast<std::size_t>(place), windowOf(undo));
}

void registerSteps(Names& names, MapHistory& history) {
    names.add("history.count", {},
              [&history](Names::Indices) { return Json(static_cast<std::int64_t>(lookedAt(history).count())); });
    names.add("history.place", {},
              [&history](Names::Indices) { return Json(static_cast<std::int64_t>(lookedAt(history).place())); });
    names.add("history().text", {{1, kMostSteps}},
              [&history](Names::Indices at) { return Json(stepAt(history, at.front()).words()); });
    names.add("history().time", {{1, kMostSteps}},
              [&history](Names::Indices at) { return Json(core::timeText(stepAt(history, at.front()).time)); });
}

}  // namespace

void registerHistory(Names& names, maps::MapUndo& undo) {
    registerSteps(names, undo.history());
    names.addProcedure("history.undo", "", [&undo](Arguments) -> Answer { return Json(undo.undo(windowOf(undo))); });
    names.addProcedure("history.redo", "", [&undo](Arguments) -> Answer { return Json(undo.redo(windowOf(undo))); });
    names.addProcedure("history.goTo", "PLACE",
                       [&undo](Arguments given) -> Answer { return Json(goTo(undo, wholeOf<int>(given[0]))); });
    names.addProcedure("history.show", "", [&undo](Arguments) -> Answer {
        undo.showList();
        return {};
    });
}

}  // namespace korvane::console
