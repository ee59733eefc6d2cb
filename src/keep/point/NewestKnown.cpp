#include "keep/point/NewestKnown.h"

#include <algorithm>
#include <utility>

namespace korvane::keep {

namespace {

constexpr std::array kMaps{&Snapshot::fuel, &Snapshot::ignition, &Snapshot::pwm};

bool isKnown(const MapSnapshot& map) {
    return std::any_of(map.working.begin(), map.working.end(), [](const auto& byte) { return byte.has_value(); });
}

}  // namespace

void NewestKnown::takeOut(Snapshot& point) {
    for (std::size_t i = 0; i < kMaps.size(); ++i) {
        auto& map = point.*kMaps.at(i);
        if (isKnown(map) && std::exchange(maps_.at(i), true)) {
            map.working.fill({});
        }
    }
    if (point.misc && std::exchange(misc_, true)) {
        point.misc.reset();
    }
    for (std::size_t i = 0; i < point.eeprom.size(); ++i) {
        auto& cell = point.eeprom.at(i);
        if (cell.known != link::Known::No && cells_.test(i)) {
            cell.known = link::Known::No;
        } else if (cell.known != link::Known::No) {
            cells_.set(i);
        }
    }
}

bool NewestKnown::hasAll(const Snapshot& now) const {
    for (std::size_t i = 0; i < kMaps.size(); ++i) {
        if (isKnown(now.*kMaps.at(i)) && !maps_.at(i)) {
            return false;
        }
    }
    for (std::size_t i = 0; i < now.eeprom.size(); ++i) {
        if (now.eeprom.at(i).known != link::Known::No && !cells_.test(i)) {
            return false;
        }
    }
    return !now.misc || misc_;
}

}  // namespace korvane::keep
