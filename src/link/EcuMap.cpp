#include "link/EcuMap.h"

#include <algorithm>
#include <utility>

#include "core/Checked.h"

namespace korvane::link {

EcuMap::Cell& EcuMap::at(std::size_t cell) {
    return core::checked(cells_, cell);
}

const EcuMap::Cell& EcuMap::at(std::size_t cell) const {
    return core::checked(cells_, cell);
}

void EcuMap::read(std::size_t first, std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        auto& cell = at(first + i);
        cell.show(bytes[i], storesNext_);
        cell.told = bytes[i];
        cell.fresh = true;
        judge(cell, bytes[i]);
        resolve(cell, bytes[i]);
    }
    store_ = store_ == Store::Nothing ? Store::Unknown : store_;
    if (restarted_ && store_ != Store::NotKept && !any(&Cell::ordered)) {
        store_ = Store::Seen;
    }
    Object::changed(this);
}

// A byte that was sent was taken, though its acknowledgement was lost, and one that the ECU ran on before is no more
// stored than it was. Any other one that is not known was stored by
// somebody else, or comes with a restart.
void EcuMap::Cell::show(std::uint8_t byte, bool stores) {
    if (working == byte) {
        return;
    }
    working = byte;
    if (doubtful != byte && (onItsWay != byte || stores)) {
        kept = byte;
    }
}

// What the ECU shows behind its restart is what it has stored.
void EcuMap::judge(Cell& cell, std::uint8_t byte) {
    if (const auto ordered = cell.ordered; restarted_ && ordered) {
        cell.ordered.reset();
        store_ = ordered == byte ? store_ : Store::NotKept;
    }
}

// What was sent over an earlier connection is there only if the ECU has not restarted.
void EcuMap::resolve(Cell& cell, std::uint8_t byte) {
    const auto doubtful = std::exchange(cell.doubtful, std::nullopt);
    if (doubtful && store_ == Store::InDoubt) {
        store_ = doubtful == byte ? Store::NotOrdered : Store::Lost;
    }
}

bool EcuMap::any(std::optional<std::uint8_t> Cell::*byte) const {
    return std::any_of(cells_.begin(), cells_.end(), [byte](const Cell& cell) { return (cell.*byte).has_value(); });
}

void EcuMap::sending(std::size_t cell, std::uint8_t byte) {
    at(cell).onItsWay = byte;
    storesNext_ = false;
    notOrdered();
}

void EcuMap::notOrdered() {
    store_ = Store::NotOrdered;
    restarted_ = false;
}

void EcuMap::acknowledged(std::size_t firstCell) {
    for (std::size_t i = firstCell; i < firstCell + kHalf; ++i) {
        auto& cell = at(i);
        if (const auto byte = std::exchange(cell.onItsWay, std::nullopt)) {
            cell.working = byte;
            cell.kept = storesNext_ ? byte : cell.kept;
            cell.fresh = true;
        }
    }
    if (store_ == Store::Ordered && !any(&Cell::onItsWay)) {
        store_ = Store::Acknowledged;
    }
    Object::changed(this);
}

void EcuMap::changed(std::size_t cell, std::uint8_t byte) {
    at(cell).working = byte;
    at(cell).fresh = true;
    notOrdered();
    Object::changed(this);
}

// Of what a restart has made the ECU forget there is nothing to store.
void EcuMap::stored() {
    for (auto& cell : cells_) {
        cell.doubtful.reset();
        // One that is sent anew as it is, is there whether that arrives or not.
        if (!cell.onItsWay || cell.onItsWay == cell.working) {
            cell.kept = cell.working;
        }
    }
    storesNext_ = true;
    if (store_ != Store::Lost) {
        order();
    }
    Object::changed(this);
}

void EcuMap::order() {
    for (std::size_t cell = firstKept_; cell < cells_.size(); ++cell) {
        cells_[cell].ordered = cells_[cell].onItsWay ? cells_[cell].onItsWay : cells_[cell].working;
    }
    store_ = any(&Cell::onItsWay) ? Store::Ordered : Store::Acknowledged;
}

// Of a cell that the ECU has never shown, it would not tell what the ECU runs on.
void EcuMap::keeps(std::size_t cell, std::uint8_t byte) {
    auto& known = at(cell);
    if (known.working && known.kept != byte) {
        known.kept = byte;
        Object::changed(this);
    }
}

// The ECU begins with what it has stored, as far as that is known.
void EcuMap::beginAgain() {
    for (auto& cell : cells_) {
        cell.working = cell.kept;
        cell.onItsWay.reset();
        cell.fresh = false;
    }
}

void EcuMap::restarted() {
    beginAgain();
    for (auto& cell : cells_) {
        cell.doubtful.reset();
    }
    if (store_ == Store::NotOrdered || store_ == Store::InDoubt) {
        store_ = Store::Lost;
    } else if (store_ == Store::Nothing || store_ == Store::Unknown) {
        store_ = Store::AsStored;
    }
    restarted_ = store_ == Store::Ordered || store_ == Store::Acknowledged;
    Object::changed(this);
}

void EcuMap::forget() {
    cells_ = {};
    store_ = Store::Nothing;
    restarted_ = false;
    Object::changed(this);
}

void EcuMap::reconnected() {
    for (auto& cell : cells_) {
        cell.doubtful = cell.working != cell.kept ? cell.working : cell.doubtful;
    }
    beginAgain();
    if (store_ == Store::NotOrdered) {
        store_ = Store::InDoubt;
    } else if (store_ == Store::AsStored) {
        store_ = Store::Unknown;
    }
    Object::changed(this);
}

std::optional<std::uint8_t> EcuMap::working(std::size_t cell) const {
    return at(cell).working;
}

std::optional<std::uint8_t> EcuMap::kept(std::size_t cell) const {
    return at(cell).kept;
}

std::optional<std::uint8_t> EcuMap::told(std::size_t cell) const {
    return at(cell).told;
}

void EcuMaps::restarted() {
    pwm.acknowledged(0);
    for (auto* map : {&fuel, &ignition, &pwm}) {
        map->restarted();
    }
}

void EcuMaps::connected() {
    for (auto* map : {&fuel, &ignition, &pwm}) {
        map->reconnected();
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
    constexpr auto kPwm = static_cast<int>(EcuMaps::kFirstKeptPwm);
    const Place kept[] = {{&EcuMaps::fuel, places.INJ_OFF, 0, kHalf},
                          {&EcuMaps::ignition, places.IGN_OFF, 0, kHalf},
                          {&EcuMaps::pwm, places.PWM_OFF, kPwm, kHalf - kPwm}};
    for (const auto& [map, first, firstCell, cells] : kept) {
        if (first >= 0 && first <= address && address < first + cells) {
            return MapCell{map, static_cast<std::size_t>(firstCell + address - first)};
        }
    }
    return {};
}

}  // namespace korvane::link
