#include "keep/restore/StrangeCells.h"

#include <algorithm>

namespace korvane::keep {

bool Leftovers::explains(int address, std::uint8_t byte) const {
    const auto found = bytes.find(address);
    return inFlight == address || (found != bytes.end() && found->second == byte);
}

FoundBytes strangeCells(const RestoreJournal& journal, const FoundBytes& now, const Leftovers& left) {
    FoundBytes strange;
    for (const auto& [address, before, point] : journal.cells) {
        const auto found = now.find(address);
        if (found != now.end() && found->second != before && found->second != point &&
            !left.explains(address, found->second)) {
            strange.insert(*found);
        }
    }
    return strange;
}

bool isAsLeft(const RestoreJournal& journal, const link::EepromCells& told) {
    std::size_t atGoal = 0;
    for (const auto& cell : journal.cells) {
        const auto& [byte, known] = told.at(static_cast<std::size_t>(cell.address));
        if (known != link::Known::Told || (byte != cell.before && byte != cell.point)) {
            return false;
        }
        atGoal += byte == journal.wanted(cell) ? 1 : 0;
    }
    return !sideOf(journal, told) && atGoal >= static_cast<std::size_t>(journal.written);
}

std::optional<RestoreJournal::Goal> sideOf(const RestoreJournal& journal, const link::EepromCells& told) {
    const auto isAt = [&](std::uint8_t JournalCell::*byte) {
        return std::all_of(journal.cells.begin(), journal.cells.end(), [&](const JournalCell& cell) {
            const auto& known = told.at(static_cast<std::size_t>(cell.address));
            return known.known == link::Known::Told && known.byte == cell.*byte;
        });
    };
    if (isAt(&JournalCell::point)) {
        return RestoreJournal::Goal::Point;
    }
    return isAt(&JournalCell::before) ? std::optional(RestoreJournal::Goal::Before) : std::nullopt;
}

}  // namespace korvane::keep
