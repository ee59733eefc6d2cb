// The restore points; declared in Registry.h.
#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "console/ConsoleError.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "core/OneLine.h"
#include "core/TimeText.h"
#include "keep/restore/PointList.h"
#include "platform/Texts.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using keep::PointEntry;

constexpr int kMostPoints = 1'000'000'000;

const PointEntry& pointAt(keep::Keeper& keeper, int number) {
    const auto& points = keeper.points();
    if (number < 1 || std::cmp_greater(number, points.size())) {
        throw ConsoleError(points.empty() ? "there is no restore point"
                                          : "the last restore point is " + std::to_string(points.size()));
    }
    return points[static_cast<std::size_t>(number) - 1];
}

std::string nameAt(keep::Keeper& keeper, const Json& number) {
    return pointAt(keeper, wholeOf<int>(number)).name;
}

// A sentence of what went wrong becomes an error.
Answer done(const std::string& failure) {
    if (!failure.empty()) {
        throw ConsoleError(failure);
    }
    return {};
}

Json differs(const keep::Keeper& keeper, const PointEntry& point) {
    const auto text = keeper.differsText(point.name);
    const bool isNumber =
        !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? Json(std::stoi(text)) : Json(text);
}

void addMember(Names& names, keep::Keeper& keeper, const std::string& member,
               std::function<Json(const PointEntry&)> value) {
    names.add("keep()." + member, {{1, kMostPoints}},
              [&keeper, value = std::move(value)](Names::Indices at) { return value(pointAt(keeper, at.front())); });
}

void registerPoints(Names& names, keep::Keeper& keeper) {
    names.add("keep.count", {}, [&keeper](Names::Indices) {
        keeper.refresh();
        return Json(static_cast<std::int64_t>(keeper.points().size()));
    });
    names.add("keep.notice", {}, [&keeper](Names::Indices) { return Json(keeper.notice().words()); });
    addMember(names, keeper, "name", [](const auto& point) { return Json(core::onOneLine(point.name)); });
    addMember(names, keeper, "time",
              [](const auto& point) { return Json(point.damage.empty() ? keep::timeTextOf(point) : std::string()); });
    addMember(names, keeper, "reason", [](const auto& point) { return Json(point.reason); });
    addMember(names, keeper, "ecu", [](const auto& point) { return Json(keep::ecuTextOf(point)); });
    addMember(names, keeper, "note", [](const auto& point) { return Json(point.note); });
    addMember(names, keeper, "damage", [](const auto& point) { return Json(point.damage); });
    addMember(names, keeper, "differs", [&keeper](const auto& point) { return differs(keeper, point); });
}

struct Part {
    std::string_view word;
    keep::MapSnapshot keep::Snapshot::*map;
};
constexpr std::array kParts{Part{"fuel", &keep::Snapshot::fuel}, Part{"ignition", &keep::Snapshot::ignition},
                            Part{"pwm", &keep::Snapshot::pwm}};

void choosePart(keep::RestoreChoice& choice, std::string_view word) {
    const auto* const part =
        std::find_if(kParts.begin(), kParts.end(), [&](const Part& each) { return each.word == word; });
    if (part != kParts.end()) {
        choice.maps.push_back(part->map);
    } else if (word == "settings") {
        choice.settings = true;
    } else if (word == "edited") {
        choice.from = keep::MapFrom::Desk;
    } else {
        throw ConsoleError("the parts are fuel, ignition, pwm, settings and edited");
    }
}

keep::RestoreChoice partsOf(std::string_view words) {
    keep::RestoreChoice choice;
    for (words = platform::trimmed(words); !words.empty(); words = platform::trimmed(words)) {
        const auto word = words.substr(0, words.find(' '));
        choosePart(choice, word);
        words.remove_prefix(word.size());
    }
    return choice;
}

// All maps that the point knows, and the settings.
keep::RestoreChoice allOf(const keep::Keeper& keeper, const std::string& name) {
    keep::RestoreChoice choice{.maps = {}, .settings = true};
    const auto point = keeper.load(name);
    for (const auto map : keep::kMapsOfPoint) {
        if (point.content && keep::hasMap(point.content->ecu, map) &&
            keep::mapOf(*point.content, map, keep::MapFrom::Ecu).isKnown) {
            choice.maps.push_back(map);
        }
    }
    return choice;
}

Answer restorePoint(const keep::RestoreContext& context, Arguments given) {
    const auto name = nameAt(context.keeper, given[0]);
    return Json(keep::restore(context, name, given.size() > 1 ? partsOf(text(given[1])) : allOf(context.keeper, name)));
}

}  // namespace

void registerRestorePoints(Names& names, const keep::RestoreContext& context, std::function<void()> open) {
    auto& keeper = context.keeper;
    registerPoints(names, keeper);
    names.addProcedure("keep.add", "[NOTE]", [&keeper](Arguments given) {
        return done(keeper.addByHand(given.empty() ? std::string() : text(given[0])));
    });
    names.addProcedure("keep.note", "NUMBER NOTE", [&keeper](Arguments given) {
        return done(keeper.setNote(nameAt(keeper, given[0]), text(given[1])));
    });
    names.addProcedure("keep.closeNotice", "", [&keeper](Arguments) -> Answer {
        keeper.notice().close();
        return {};
    });
    names.addProcedure("keep.remove", "NUMBER",
                       [&keeper](Arguments given) { return done(keeper.remove(nameAt(keeper, given[0]))); });
    names.addProcedure("keep.restore", "NUMBER [PARTS]",
                       [&context](Arguments given) { return restorePoint(context, given); });
    names.addProcedure("keep.open", "", [open = std::move(open)](Arguments) -> Answer {
        open();
        return {};
    });
}

}  // namespace korvane::console
