#include "link/EcuMap.h"

#include <algorithm>
#include <utility>

#include "core/Checked.h"

namespace korvane::link {

namespace {
constexpr int kFirstKeptPwm = 64;  // the EEPROM has no cells before it
}  // namespace

EcuMap::Cell& EcuMap::at(std::size_t cell) {
    return core::checked(cells_, cell);
}

const EcuMap::Cell& EcuMap::at(std::size_t cell) const {
    return core::checked(cells_, cell);
}

void EcuMap::read(std::size_t first, std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        at(first + i).show(bytes[i], storesNext_);
    }
    Object::changed(this);
}

// A byte that was sent was taken, though its acknowledgement was lost. Any other one that is not known was stored by
// somebody else, or comes with a restart.
void EcuMap::Cell::show(std::uint8_t byte, bool stores) {
    if (working == byte) {
        return;
    }
    working = byte;
    if (onItsWay != byte || stores) {
        kept = byte;
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
    Object::changed(this);
}

void EcuMap::changed(std::size_t cell, std::uint8_t byte) {
    at(cell).working = byte;
    Object::changed(this);
}

void EcuMap::stored() {
    for (auto& cell : cells_) {
        if (!cell.onItsWay) {
            cell.kept = cell.working;
        }
    }
    storesNext_ = true;
    Object::changed(this);
}

// Of a cell that the ECU has never shown, it would not tell what the ECU runs on.
void EcuMap::keeps(std::size_t cell, std::uint8_t byte) {
    auto& known = at(cell);
    if (known.working && known.kept != byte) {
        known.kept = byte;
        Object::changed(this);
    }
}

void EcuMap::restarted() {
    for (auto& cell : cells_) {
        cell.working = cell.kept;
        cell.onItsWay.reset();
    }
    Object::changed(this);
}

void EcuMap::forget() {
    cells_ = {};
    Object::changed(this);
}

std::optional<std::uint8_t> EcuMap::working(std::size_t cell) const {
    return at(cell).working;
}

std::optional<std::uint8_t> EcuMap::kept(std::size_t cell) const {
    return at(cell).kept;
}

void EcuMaps::restarted() {
    pwm.acknowledged(0);
    connected();
}

void EcuMaps::connected() {
    for (auto* map : {&fuel, &ignition, &pwm}) {
        map->restarted();
    }
}

void EcuMaps::identified(std::span<const std::uint8_t> identity) {
    if (!identity_.empty() && !std::ranges::equal(identity_, identity)) {
        for (auto* map : {&fuel, &ignition, &pwm}) {
            map->forget();
        }
    }
    identity_.assign(identity.begin(), identity.end());
}

void EcuMaps::eepromHas(const core::ParameterAddresses& places, int address, std::uint8_t byte) {
    if (const auto place = mapCellAt(places, address)) {
        (this->*place->map).keeps(place->cell, byte);
    }
}

std::optional<MapCell> mapCellAt(const core::ParameterAddresses& places, int address) {
    struct Place {
        EcuMap EcuMaps::*map;
        int first;  // -1 before the layout is known
        int firstCell;
        int cells;
    };
    constexpr auto kHalf = static_cast<int>(EcuMap::kHalf);
    const Place kept[] = {{&EcuMaps::fuel, places.INJ_OFF, 0, kHalf},
                          {&EcuMaps::ignition, places.IGN_OFF, 0, kHalf},
                          {&EcuMaps::pwm, places.PWM_OFF, kFirstKeptPwm, kHalf - kFirstKeptPwm}};
    for (const auto& [map, first, firstCell, cells] : kept) {
        if (first >= 0 && first <= address && address < first + cells) {
            return MapCell{map, static_cast<std::size_t>(firstCell + address - first)};
        }
    }
    return {};
}

}  // namespace korvane::link
