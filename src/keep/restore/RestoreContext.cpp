#include "keep/restore/RestoreContext.h"

#include <string_view>

#include "core/Checked.h"
#include "core/tables/Module1.h"

namespace korvane::keep {

namespace {

constexpr std::string_view kNames[] = {"fuel", "ignition", "PWM"};

std::string_view nameOf(MapSnapshot Snapshot::*map) {
    return map == &Snapshot::fuel ? kNames[0] : map == &Snapshot::ignition ? kNames[1] : kNames[2];
}

// A point without an ECU has what its desk uses. Without an ECU now, maps of any size may come to the desk.
int cellsOf(const Snapshot& point) {
    const bool large = point.ecu.swType == 0 ? usesLargeMaps(point) : core::hasLargeMaps(point.ecu.swType);
    return static_cast<int>(large ? core::kMapSize : link::EcuMap::kHalf);
}

std::string mapsRefusal(const Snapshot& point, const EcuIdentity& now, const RestoreChoice& choice) {
    const int cells = cellsOf(point);
    if (now.swType != 0 && cells != mapSizeOf(now)) {
        return "Its maps have " + std::to_string(cells) + " cells, those of this ECU " +
               std::to_string(mapSizeOf(now)) + '.';
    }
    for (const auto map : choice.maps) {
        if (!mapOf(point, map, choice.from).isKnown) {
            return "It does not know the " + std::string(nameOf(map)) + " map.";
        }
    }
    return {};
}

std::string listOf(const RestoreChoice& choice) {
    std::string names;
    for (const auto map : choice.maps) {
        names += (names.empty() ? "" : ", ") + std::string(nameOf(map));
    }
    return names;
}

}  // namespace

std::string otherTypeText(const Snapshot& point, const EcuIdentity& now) {
    if (now.swType == 0 || point.ecu.swType == now.swType) {
        return {};
    }
    return "The point is of an ECU of type " + std::to_string(point.ecu.swType) + ", this one has type " +
           std::to_string(now.swType) + ": its maps may mean other things here.";
}

std::string restore(const RestoreContext& context, const std::string& name, const RestoreChoice& choice) {
    const auto point = context.keeper.load(name);
    if (!point.content) {
        return "The restore point can't be read: " + point.damage + '.';
    }
    if (choice.maps.empty() && !choice.settings) {
        return "Nothing is chosen.";
    }
    const auto now = context.keeper.now().ecu;
    if (auto refusal = mapsRefusal(*point.content, now, choice); !choice.maps.empty() && !refusal.empty()) {
        return "Nothing was restored. " + refusal;
    }
    std::string words;
    if (!choice.maps.empty()) {
        if (auto refusal = context.toDesk(*point.content, choice); !refusal.empty()) {
            return refusal;
        }
        const auto other = otherTypeText(*point.content, now);
        words = "In the working maps now: " + listOf(choice) + ". \"Send\" brings them to the ECU." +
                (other.empty() ? "" : " ") + other;
    }
    if (choice.settings) {
        context.run.restore(*point.content, name);
        words += (words.empty() ? "" : " ") + context.run.Text.get();
    }
    return words;
}

}  // namespace korvane::keep
