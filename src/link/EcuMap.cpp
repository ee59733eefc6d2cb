#include "link/EcuMap.h"

#include <utility>

#include "core/Checked.h"

namespace korvane::link {

EcuMap::Cell& EcuMap::at(std::size_t cell) {
    return core::checked(cells_, cell);
}

const EcuMap::Cell& EcuMap::at(std::size_t cell) const {
    return core::checked(cells_, cell);
}

// A byte that is not the known one was stored by somebody else, or comes with a restart.
void EcuMap::read(std::size_t first, std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        auto& cell = at(first + i);
        if (cell.working != bytes[i]) {
            cell.working = cell.kept = bytes[i];
        }
    }
}

void EcuMap::sending(std::size_t cell, std::uint8_t byte) {
    at(cell).onItsWay = byte;
    storesNext_ = false;
}

void EcuMap::acknowledged(std::size_t firstCell) {
    for (std::size_t i = firstCell; i < firstCell + kHalf; ++i) {
        auto& cell = at(i);
        if (const auto byte = std::exchange(cell.onItsWay, std::nullopt)) {
            cell.working = byte;
            cell.kept = storesNext_ ? byte : cell.kept;
        }
    }
}

void EcuMap::changed(std::size_t cell, std::uint8_t byte) {
    at(cell).working = byte;
}

void EcuMap::stored() {
    for (auto& cell : cells_) {
        cell.kept = cell.working;
    }
    storesNext_ = true;
}

void EcuMap::restarted() {
    for (auto& cell : cells_) {
        cell.working = cell.kept;
        cell.onItsWay.reset();
    }
}

std::optional<std::uint8_t> EcuMap::working(std::size_t cell) const {
    return at(cell).working;
}

std::optional<std::uint8_t> EcuMap::kept(std::size_t cell) const {
    return at(cell).kept;
}

void EcuMaps::restarted() {
    for (auto* map : {&fuel, &ignition, &pwm}) {
        map->restarted();
    }
}

}  // namespace korvane::link
