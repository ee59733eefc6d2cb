// The firmware's memory: the EEPROM, and the working copies of maps and misc block that the engine runs on.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "ecu/engine/EngineNeed.h"
#include "ecu/memory/Eeprom.h"
#include "ecu/memory/FirmwareType.h"
#include "ecu/memory/MapStore.h"

namespace korvane::ecu {

using MapCells = std::array<std::uint8_t, kMapCells>;
using MiscBytes = std::array<std::uint8_t, kMiscBytes>;

class FirmwareMemory {
public:
    // Factory contents of an ECU of `type`, overwritten with `cells` from cell 0 on (3001 at most).
    FirmwareMemory(const FirmwareType& type, std::span<const std::uint8_t> cells, MapFault mapFault = MapFault::Smooth);

    [[nodiscard]] const FirmwareType& type() const { return type_; }
    [[nodiscard]] std::span<const std::uint8_t> eeprom() const { return eeprom_.cells(); }
    // How often each cell has been written.
    [[nodiscard]] std::span<const std::uint32_t> writes() const { return eeprom_.writes(); }
    // 255 where there is no cell.
    [[nodiscard]] std::uint8_t read(int address) const { return eeprom_.read(address); }
    // Lost where there is no cell. A cell of the misc block changes the working block too; maps change only what is
    // stored. Here and below, `at` is when the storing begins.
    void write(int address, std::uint8_t value, Micros at = 0);

    // A named parameter; `name` must be one of core::parameterNames().
    [[nodiscard]] int byteOf(std::string_view name) const;
    [[nodiscard]] int wordOf(std::string_view name) const;

    [[nodiscard]] const MapCells& working(MapKind kind) const { return maps_[slot(kind)]; }
    [[nodiscard]] MapCells stored(MapKind kind) const;
    // Changes one working cell. False if the map has no such cell.
    bool setCell(MapKind kind, int index, std::uint8_t value);
    // Fills cells 0 to 159 or, for `upper`, 160 to 319 of the working map. False if the map has no such half.
    bool fillHalf(MapKind kind, bool upper, std::span<const std::uint8_t, kHalfCells> cells);
    // The fuel map of factory contents becomes the working map and is stored.
    void storeFactoryFuel(MapFault mapFault, Micros at);
    // Working map to EEPROM, both halves of a large one.
    void commit(MapKind kind, Micros at = 0);

    [[nodiscard]] const MiscBytes& misc() const { return misc_; }
    void setMisc(std::span<const std::uint8_t, kMiscBytes> bytes);
    void commitMisc(Micros at = 0);

    // The RPM limit of a limiter box as of its start.
    [[nodiscard]] int limiterRpm() const { return limiterRpm_; }

    // The power ends at `at`: what is being stored stays as Eeprom::powerFails() leaves it.
    void powerFails(Micros at, Noise& noise);

    // What a start of the firmware does: everything working is loaded from the EEPROM.
    void reload();

    // Goes up with every change.
    [[nodiscard]] std::uint64_t revision() const { return revision_; }

private:
    [[nodiscard]] static std::size_t slot(MapKind kind) { return static_cast<std::size_t>(kind); }
    [[nodiscard]] int cellsOf(MapKind kind) const;

    FirmwareType type_;
    Eeprom eeprom_;
    std::array<MapCells, 3> maps_{};
    MiscBytes misc_{};
    int limiterRpm_ = 0;
    std::uint64_t revision_ = 0;
};

}  // namespace korvane::ecu
