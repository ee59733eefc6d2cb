#include "keep/point/PointDifference.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>

#include "core/ParameterAddresses.h"
#include "core/tables/Module1.h"

namespace korvane::keep {

namespace {

constexpr MapSnapshot Snapshot::*kMaps[] = {&Snapshot::fuel, &Snapshot::ignition, &Snapshot::pwm};

int differentBytes(const MapSnapshot::Bytes& one, const MapSnapshot::Bytes& other) {
    int count = 0;
    for (std::size_t cell = 0; cell < one.size(); ++cell) {
        count += one.at(cell) && other.at(cell) && one.at(cell) != other.at(cell) ? 1 : 0;
    }
    return count;
}

int differentMisc(const Snapshot& one, const Snapshot& other) {
    int count = 0;
    for (std::size_t i = 0; one.misc && other.misc && i < one.misc->size(); ++i) {
        count += one.misc->at(i) != other.misc->at(i) ? 1 : 0;
    }
    return count;
}

// Of those whose cell of `other` passes.
int differentCells(const Snapshot& one, const Snapshot& other, bool (*passes)(link::Known)) {
    const auto places = core::parameterAddresses(one.ecu.swType);
    int count = 0;
    for (std::size_t i = 0; i < one.eeprom.size(); ++i) {
        const auto& [byte, known] = one.eeprom.at(i);
        const auto& [otherByte, otherKnown] = other.eeprom.at(i);
        count += known != link::Known::No && passes(otherKnown) && byte != otherByte &&
                         !link::mapCellAt(places, static_cast<int>(i))
                     ? 1
                     : 0;
    }
    return count;
}

bool hasAll(const MapSnapshot::Bytes& point, const MapSnapshot::Bytes& now) {
    return std::equal(now.begin(), now.end(), point.begin(),
                      [](const auto& mine, const auto& kept) { return !mine || mine == kept; });
}

bool hasDesk(const core::MapImage& point, const core::MapImage& now) {
    return now == point || now == core::MapImage{};
}

bool hasAll(const MapSnapshot& point, const MapSnapshot& now) {
    return hasAll(point.working, now.working) && hasAll(point.kept, now.kept) && hasDesk(point.edited, now.edited);
}

bool hasAll(const link::EepromCells& point, const link::EepromCells& now) {
    return std::equal(now.begin(), now.end(), point.begin(), [](const auto& mine, const auto& kept) {
        return mine.known == link::Known::No || (kept.known != link::Known::No && mine.byte == kept.byte);
    });
}

bool isWhatWasSent(const core::MapImage& desk, const MapSnapshot::Bytes& now) {
    return desk != core::MapImage{} && std::equal(now.begin(), now.end(), desk.begin(),
                                                  [](const auto& mine, auto sent) { return !mine || mine == sent; });
}

// Of the first `count` cells; those of which nothing is known count as 0.
bool isDeskOther(const Snapshot& now, MapSnapshot::Bytes MapSnapshot::*bytes, std::ptrdiff_t count) {
    return std::any_of(std::begin(kMaps), std::end(kMaps), [&](auto map) {
        const auto& inEcu = now.*map.*bytes;
        return !std::equal(inEcu.begin(), inEcu.begin() + count, (now.*map).edited.begin(),
                           [](const auto& told, auto desk) { return told.value_or(0) == desk; });
    });
}

std::string counted(int count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

}  // namespace

bool isSameEcu(const EcuIdentity& one, const EcuIdentity& other) {
    return one.swType == other.swType && one.hwVersion == other.hwVersion;
}

PointDifference differenceOf(const Snapshot& one, const Snapshot& other) {
    PointDifference difference;
    for (const auto map : kMaps) {
        difference.mapCells += differentBytes((one.*map).working, (other.*map).working);
    }
    difference.settings =
        differentMisc(one, other) + differentCells(one, other, [](auto known) { return known != link::Known::No; });
    return difference;
}

int notReadBack(const Snapshot& point, const Snapshot& now) {
    return differentCells(point, now, [](auto known) { return known == link::Known::Sent; });
}

PointDifference changesSince(const Snapshot& point, const Snapshot& now) {
    PointDifference difference = differenceOf(now, point);
    for (const auto map : kMaps) {
        if (isWhatWasSent((point.*map).edited, (now.*map).working)) {
            difference.mapCells -= differentBytes((now.*map).working, (point.*map).working);
        }
    }
    return difference;
}

bool shares(const Snapshot& one, const Snapshot& other) {
    const auto inBoth = [](const auto& byte, const auto& otherByte) { return byte && otherByte; };
    const auto knownInBoth = [](const auto& cell, const auto& otherCell) {
        return cell.known != link::Known::No && otherCell.known != link::Known::No;
    };
    return (one.misc && other.misc) ||
           std::any_of(std::begin(kMaps), std::end(kMaps),
                       [&](auto map) {
                           const auto& bytes = (one.*map).working;
                           const auto& others = (other.*map).working;
                           return std::inner_product(bytes.begin(), bytes.end(), others.begin(), false,
                                                     std::logical_or<>(), inBoth);
                       }) ||
           std::inner_product(one.eeprom.begin(), one.eeprom.end(), other.eeprom.begin(), false, std::logical_or<>(),
                              knownInBoth);
}

std::string wordsOf(const PointDifference& difference) {
    const auto& [cells, settings] = difference;
    if (difference.total() == 0) {
        return "nothing";
    }
    if (cells == 0 || settings == 0) {
        return cells == 0 ? counted(settings, "setting") : counted(cells, "map cell");
    }
    return counted(cells, "map cell") + " and " + counted(settings, "setting");
}

bool hasEdits(const Snapshot& now) {
    return isDeskOther(now, &MapSnapshot::working, core::kMapSize);
}

bool hasUnstored(const Snapshot& now) {
    const bool isSmall = now.ecu.swType != 0 && !core::hasLargeMaps(now.ecu.swType);
    return isDeskOther(now, &MapSnapshot::kept, isSmall ? link::EcuMap::kHalf : core::kMapSize);
}

bool hasUnstoredCells(const Snapshot& now) {
    return isDeskOther(now, &MapSnapshot::kept, core::kMapSize);
}

bool isSameDesk(const Snapshot& one, const Snapshot& other) {
    return std::all_of(std::begin(kMaps), std::end(kMaps),
                       [&](auto map) { return (one.*map).edited == (other.*map).edited; });
}

bool coversDesk(const Snapshot& point, const Snapshot& now) {
    return std::all_of(std::begin(kMaps), std::end(kMaps),
                       [&](auto map) { return hasDesk((point.*map).edited, (now.*map).edited); });
}

bool covers(const Snapshot& point, const Snapshot& now) {
    return isSameEcu(point.ecu, now.ecu) && point.ecu.features == now.ecu.features &&
           std::all_of(std::begin(kMaps), std::end(kMaps), [&](auto map) { return hasAll(point.*map, now.*map); }) &&
           (!now.misc || now.misc == point.misc) && hasAll(point.eeprom, now.eeprom);
}

}  // namespace korvane::keep
