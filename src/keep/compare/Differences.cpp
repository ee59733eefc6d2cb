#include "keep/compare/Differences.h"

#include <algorithm>

#include "core/Checked.h"

namespace korvane::keep {

namespace {

constexpr int kByteValues = 256;

int commonSize(const MapSide& left, const MapSide& right) {
    const int size = std::max(left.size, right.size);
    return size != 0 ? size : maps::kOrdinaryMaps.cells();
}

}  // namespace

MapDifference differenceOf(const MapSide& left, const MapSide& right) {
    MapDifference difference;
    difference.isComparable = left.size == 0 || right.size == 0 || left.size == right.size;
    difference.shape = commonSize(left, right) == maps::kLargeMaps.cells() ? maps::kLargeMaps : maps::kOrdinaryMaps;
    for (int cell = 0; difference.isComparable && cell < difference.shape.cells(); ++cell) {
        const auto& old = core::checked(left.bytes, cell);
        const auto& current = core::checked(right.bytes, cell);
        if (old.has_value() != current.has_value()) {
            ++difference.knownOnOneSide;
        } else if (old != current) {
            difference.cells.push_back(cell);
        }
    }
    return difference;
}

std::optional<std::int32_t> countOf(const Side& side, const Setting& setting) {
    const auto byteAt = [&](int address) -> std::optional<std::int32_t> {
        if (setting.isMisc) {
            return side.misc ? std::optional<std::int32_t>(core::checked(*side.misc, address - 1)) : std::nullopt;
        }
        return core::checked(side.eeprom, address);
    };
    const auto low = byteAt(setting.address);
    if (!setting.isWord) {
        return low;
    }
    const auto high = byteAt(setting.address + 1);
    return low && high ? std::optional(*low + kByteValues * *high) : std::nullopt;
}

Differences differences(const Side& left, const Side& right, const std::vector<Setting>& settings) {
    Differences all;
    for (std::size_t map = 0; map < kMapCount; ++map) {
        all.maps.at(map) = differenceOf(left.maps.at(map), right.maps.at(map));
    }
    for (std::size_t i = 0; i < settings.size(); ++i) {
        const SettingDifference difference{i, countOf(left, settings[i]), countOf(right, settings[i])};
        if (difference.left || difference.right) {
            all.settings.push_back(difference);
            all.differentSettings += difference.differs() ? 1 : 0;
        }
    }
    return all;
}

}  // namespace korvane::keep
