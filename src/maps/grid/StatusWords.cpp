#include "maps/grid/StatusWords.h"

#include <cmath>

#include "core/Numbers.h"

namespace korvane::maps {

namespace {

// `now`, and what it was where that differs.
template <class Number>
std::string withOld(Number now, Number old, std::string_view unit) {
    std::string words = core::textOf(now) + std::string(unit);
    return now == old ? words : words + " (was " + core::textOf(old) + ")";
}

std::string joined(const std::string& words) {
    return words.empty() ? words : "; " + words;
}

std::string cells(int count) {
    return core::textOf(count) + (count == 1 ? " cell" : " cells");
}

// "not sent: 12 fuel, 3 ignition"
std::string listed(std::string_view what, std::span<const UnsentOfMap> maps, int UnsentCells::*count) {
    std::string words;
    for (const auto& each : maps) {
        if (const int number = each.cells.*count; number > 0) {
            words += (words.empty() ? "" : ", ") + core::textOf(number) + " " + std::string(each.map);
        }
    }
    return words.empty() ? words : std::string(what) + ": " + words;
}

// Of what was sent; empty where nothing was, as far as is known.
std::string_view fateOf(link::Store store) {
    switch (store) {
        case link::Store::NotOrdered:
            return "not told to store";
        case link::Store::InDoubt:
            return "not told to store, perhaps gone";
        case link::Store::Ordered:
            return "told to store, not acknowledged";
        case link::Store::Acknowledged:
            return "acknowledged, told to store";
        case link::Store::Seen:
            return "stored, seen after a restart";
        case link::Store::Lost:
            return "not stored, gone with the restart";
        case link::Store::NotKept:
            return "not stored, seen after a restart";
        case link::Store::Nothing:
        case link::Store::Unknown:
        case link::Store::AsStored:
            break;
    }
    return "";
}

}  // namespace

std::string unknownWords(std::span<const StoreOfMap> maps) {
    std::string words;
    for (const auto& [map, store] : maps) {
        if (store == link::Store::Unknown) {
            words += (words.empty() ? "Not known whether stored: " : ", ") + std::string(map);
        }
    }
    return words;
}

std::string unreadWords(std::span<const std::string_view> maps) {
    std::string words;
    for (const auto map : maps) {
        words += (words.empty() ? "Not read since the last connect or restart: " : ", ") + std::string(map);
    }
    return words.empty() ? words : words + "; no new restore point would have what a send overwrites";
}

std::string storeWords(std::span<const StoreOfMap> maps) {
    std::string words;
    for (const auto& [map, store] : maps) {
        if (const auto fate = fateOf(store); !fate.empty()) {
            words += (words.empty() ? "Sent " : "; sent ") + std::string(map) + ": " + std::string(fate);
        }
    }
    return words;
}

std::string placeWords(MapGeometry shape, int cell) {
    const int row = cell / shape.columns;
    return core::textOf(shape.rpmOf(cell)) + " RPM, " + core::textOf(row * 10) + "-" + core::textOf((row + 1) * 10) +
           " %";
}

std::string cellWords(const MapNoun& map, MapGeometry shape, int cell, const CellFacts& facts) {
    const auto& [edited, received, tooLong, power, injectorSize] = facts;
    std::string words = std::string(map.title) + ", " + placeWords(shape, cell) + ": " +
                        withOld(edited.number, received.number, " " + std::string(map.unit)) + ", count " +
                        withOld(int{edited.count}, int{received.count}, "");
    if (power) {
        words += ", " + core::textOf(*power) + " hp with " + core::textOf(injectorSize) + " cc";
    }
    if (tooLong) {
        words += ", too long for this speed";
    }
    return words;
}

std::string neverReadWords(const MapNoun& map, MapGeometry shape, int cell) {
    return std::string(map.title) + ", " + placeWords(shape, cell) + ": not read from the ECU yet";
}

// The numbers of cells have three decimals.
std::string blockWords(const MapNoun& map, CellRange range, double sum, int unread) {
    return std::string(map.title) + " block of " + cells(range.last - range.first + 1) + ", sum " +
           core::textOf(std::round(sum * 1000) / 1000) + " " + std::string(map.unit) +
           (unread > 0 ? " without " + cells(unread) + " not read" : "");
}

std::string unsentWords(std::span<const UnsentOfMap> maps) {
    std::string words = listed("Not sent", maps, &UnsentCells::unsent);
    return words.empty() ? listed("Not stored", maps, &UnsentCells::unstored)
                         : words + joined(listed("not stored", maps, &UnsentCells::unstored));
}

}  // namespace korvane::maps
