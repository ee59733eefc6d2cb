#include "link/EcuEeprom.h"

namespace korvane::link {

void EcuEeprom::set(std::int64_t address, EepromCell cell) {
    if (address < 0 || address >= static_cast<std::int64_t>(cells_.size())) {
        return;
    }
    auto& known = cells_.at(static_cast<std::size_t>(address));
    if (known != cell) {
        known = cell;
        changed(this);
    }
}

void EcuEeprom::forget() {
    cells_ = {};
    changed(this);
}

}  // namespace korvane::link
