#include "ecu/memory/FirmwareMemory.h"

#include <algorithm>
#include <vector>

#include "core/ParameterNames.h"
#include "ecu/memory/FactoryContents.h"

namespace korvane::ecu {

namespace {

std::vector<std::uint8_t> startContents(const FirmwareType& type, std::span<const std::uint8_t> cells,
                                        MapFault mapFault) {
    auto contents = factoryContents(type, mapFault);
    std::ranges::copy(cells.first(std::min(cells.size(), contents.size())), contents.begin());
    return contents;
}

}  // namespace

FirmwareMemory::FirmwareMemory(const FirmwareType& type, std::span<const std::uint8_t> cells, MapFault mapFault)
    : type_(type), eeprom_(startContents(type, cells, mapFault)) {
    reload();
}

void FirmwareMemory::write(int address, std::uint8_t value, Micros at) {
    if (!eeprom_.write(address, value, at)) {
        return;
    }
    if (address >= kMiscAddress && address < kMiscAddress + kMiscBytes) {
        misc_.at(static_cast<std::size_t>(address - kMiscAddress)) = value;
    }
    ++revision_;
}

int FirmwareMemory::byteOf(std::string_view name) const {
    return read(core::addressOf(name));
}

int FirmwareMemory::wordOf(std::string_view name) const {
    const int address = core::addressOf(name);
    return read(address) + 256 * read(address + 1);
}

MapCells FirmwareMemory::stored(MapKind kind) const {
    MapCells cells{};
    for (int i = 0; i < cellsOf(kind); ++i) {
        if (const int address = mapAddress(kind, i); address >= 0) {
            cells.at(static_cast<std::size_t>(i)) = read(address);
        }
    }
    return cells;
}

bool FirmwareMemory::setCell(MapKind kind, int index, std::uint8_t value) {
    if (index < 0 || index >= cellsOf(kind)) {
        return false;
    }
    maps_[slot(kind)].at(static_cast<std::size_t>(index)) = value;
    ++revision_;
    return true;
}

bool FirmwareMemory::fillHalf(MapKind kind, bool upper, std::span<const std::uint8_t, kHalfCells> cells) {
    if (upper && cellsOf(kind) <= kHalfCells) {
        return false;
    }
    std::ranges::copy(cells, maps_[slot(kind)].begin() + (upper ? kHalfCells : 0));
    ++revision_;
    return true;
}

void FirmwareMemory::storeFactoryFuel(MapFault mapFault, Micros at) {
    const auto contents = factoryContents(type_, mapFault);
    for (int i = 0; i < cellsOf(MapKind::Fuel); ++i) {
        const auto address = static_cast<std::size_t>(mapAddress(MapKind::Fuel, i));
        setCell(MapKind::Fuel, i, contents.at(address));
    }
    commit(MapKind::Fuel, at);
}

void FirmwareMemory::commit(MapKind kind, Micros at) {
    for (int i = 0; i < cellsOf(kind); ++i) {
        if (const int address = mapAddress(kind, i); address >= 0) {
            eeprom_.write(address, working(kind).at(static_cast<std::size_t>(i)), at);
        }
    }
    ++revision_;
}

void FirmwareMemory::setMisc(std::span<const std::uint8_t, kMiscBytes> bytes) {
    std::ranges::copy(bytes, misc_.begin());
    ++revision_;
}

void FirmwareMemory::commitMisc(Micros at) {
    for (int i = 0; i < kMiscBytes; ++i) {
        eeprom_.write(kMiscAddress + i, misc_.at(static_cast<std::size_t>(i)), at);
    }
    ++revision_;
}

void FirmwareMemory::powerFails(Micros at, Noise& noise) {
    eeprom_.powerFails(at, noise);
    ++revision_;
}

void FirmwareMemory::reload() {
    for (const MapKind kind : {MapKind::Fuel, MapKind::Ignition, MapKind::Pwm}) {
        maps_[slot(kind)] = stored(kind);
    }
    std::ranges::copy(eeprom().subspan(kMiscAddress, kMiscBytes), misc_.begin());
    limiterRpm_ = wordOf("RPM_LIMIT_OFF");
    ++revision_;
}

int FirmwareMemory::cellsOf(MapKind kind) const {
    return type_.large && kind != MapKind::Pwm ? kMapCells : kHalfCells;
}

}  // namespace korvane::ecu
