// What an ECU has in the cells of a journal, against what the journal can explain.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "keep/restore/RestoreJournal.h"
#include "link/EcuEeprom.h"

namespace korvane::keep {

using FoundBytes = std::map<int, std::uint8_t>;  // by address

// What a restore has left behind in this connection, in other cells than those that it could finish.
struct Leftovers {
    FoundBytes bytes;             // cells that did not agree, as they were read
    std::optional<int> inFlight;  // the cell whose write was on its way, which may be half written
    bool missed = false;          // a write may have gone to another address, and nobody has looked where

    [[nodiscard]] bool explains(int address, std::uint8_t byte) const;
};

// The cells that have neither the byte of before nor that of the point, with what they have. Another ECU of the same
// kind shows by them, and so does a setting that somebody has changed since.
[[nodiscard]] FoundBytes strangeCells(const RestoreJournal& journal, const FoundBytes& now, const Leftovers& left);

// Whether the ECU has told all cells, some of them as before and some as in the point, and at least so many as the
// journal has them written: it is the one that was left so.
[[nodiscard]] bool isAsLeft(const RestoreJournal& journal, const link::EepromCells& told);

// The side on which all cells are, as the ECU itself has told; nothing while one of them is not known, or they are on
// both sides.
[[nodiscard]] std::optional<RestoreJournal::Goal> sideOf(const RestoreJournal& journal, const link::EepromCells& told);

}  // namespace korvane::keep
