#include "core/history/MapStep.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "core/Checked.h"

namespace korvane::core {

namespace {

using Kind = Cause::Kind;

constexpr std::array<std::string_view, kWorkingMaps.size()> kMapWords{"Fuel", "Ignition", "PWM"};

// "Fuel, ignition, PWM", in the order of the maps; only the first begins with a capital.
std::string mapsOf(const std::vector<CellChange>& cells) {
    std::string words;
    std::size_t told = kMapWords.size();
    for (const auto& change : cells) {
        const auto map = static_cast<std::size_t>(change.place().map);
        if (map == told) {
            continue;
        }
        told = map;
        const bool inside = !words.empty() && change.place().map == EditedMap::Ignition;
        words += words.empty() ? "" : ", ";
        words += inside ? "ignition" : checked(kMapWords, map);
    }
    return words;
}

std::string counted(std::size_t cells) {
    return std::to_string(cells) + (cells == 1 ? " cell" : " cells");
}

std::string rangeOf(const Cause& cause) {
    return "block " + std::to_string(cause.first + 1) + " to " + std::to_string(cause.last + 1);
}

std::string cellWords(const CellChange& change, std::string_view verb) {
    return "cell " + std::to_string(change.place().cell + 1) + std::string(verb) + " from " +
           std::to_string(change.before) + " to " + std::to_string(change.after);
}

// Cells at the end of their range change by less than the others, or not at all.
std::string amountOf(const MapStep& step) {
    const auto times = static_cast<int>(step.times);
    const auto whole = [times](const CellChange& change) { return std::abs(change.after - change.before) == times; };
    const auto block = static_cast<std::size_t>(step.cause.last - step.cause.first + 1);
    const bool all = step.cells.size() == block && std::all_of(step.cells.begin(), step.cells.end(), whole);
    return (all ? "" : "at most ") + std::to_string(times);
}

std::string_view originOf(Kind kind) {
    switch (kind) {
        case Kind::Scaling:
            return "injectors rescaled";
        case Kind::File:
            return "file loaded";
        case Kind::Read:
            return "read from the ECU";
        case Kind::Agent:
            return "agent";
        case Kind::Steady:
            return "steady agent";
        case Kind::Restore:
            return "restored from a restore point";
        case Kind::Copy:
            return "copied from a comparison";
        default:
            return "changed by a script";
    }
}

std::string actOf(const MapStep& step) {
    switch (step.cause.kind) {
        case Kind::KeyUp:
        case Kind::KeyDown:
            return cellWords(step.cells.front(), "");
        case Kind::RevertCell:
            return cellWords(step.cells.front(), " reverted");
        case Kind::BlockUp:
            return rangeOf(step.cause) + " up by " + amountOf(step);
        case Kind::BlockDown:
            return rangeOf(step.cause) + " down by " + amountOf(step);
        case Kind::BlockLevel:
            return rangeOf(step.cause) + " levelled";
        case Kind::BlockFill:
            return rangeOf(step.cause) + " filled with " + std::to_string(step.cells.front().after);
        case Kind::RevertBlock:
            return rangeOf(step.cause) + " reverted";
        case Kind::Undone:
            return "undone: " + std::to_string(step.times) + (step.times == 1 ? " step" : " steps");
        default:
            return std::string(originOf(step.cause.kind)) + ", " + counted(step.cells.size());
    }
}

}  // namespace

MapImage& workingMap(MapImages& tables, EditedMap map) {
    return tables.*checked(kWorkingMaps, static_cast<std::size_t>(map));
}

CellChange::CellChange(CellPlace place, std::uint8_t byteBefore, std::uint8_t byteAfter)
    : before(byteBefore),
      after(byteAfter),
      packed(static_cast<std::uint16_t>(static_cast<std::size_t>(place.map) * kMapSize + place.cell)) {}

CellPlace CellChange::place() const {
    return {static_cast<EditedMap>(number() / kMapSize), number() % kMapSize};
}

Cause Cause::cells(Kind kind, EditedMap map, std::size_t first, std::size_t last) {
    return {kind, map, static_cast<std::int16_t>(first), static_cast<std::int16_t>(last)};
}

Cause Cause::read(EditedMap map, std::size_t first, std::size_t count) {
    return cells(Kind::Read, map, first, first + count - 1);
}

Cause Cause::file(bool withPwm) {
    return {Kind::File, withPwm ? EditedMap::Pwm : EditedMap::Ignition};
}

std::string MapStep::words() const {
    return cells.empty() ? std::string() : mapsOf(cells) + ": " + actOf(*this);
}

}  // namespace korvane::core
