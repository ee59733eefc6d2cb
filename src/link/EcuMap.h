// What the ECU has of its maps, as far as the line has told.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "controls/Object.h"
#include "core/ParameterAddresses.h"
#include "core/tables/MapImages.h"

namespace korvane::link {

// One map. The ECU runs on a working copy; what it has not stored is lost when it restarts. RuntimeError 9 for a cell
// beyond the map. Observers are told when the ECU has another map than before.
class EcuMap : public controls::Object {
public:
    // The answer to a read of the cells from `first` on.
    void read(std::size_t first, std::span<const std::uint8_t> bytes);
    // A cell of a map that is sent as a whole. It counts when its half has been acknowledged.
    void sending(std::size_t cell, std::uint8_t byte);
    void acknowledged(std::size_t firstCell);
    // A cell that was sent alone to an ECU that is heard; it does not acknowledge it.
    void changed(std::size_t cell, std::uint8_t byte);
    // The ECU was told to store the map. What is on its way is stored when it is acknowledged.
    void stored();
    // What its EEPROM has of a cell, which it runs on only after a restart.
    void keeps(std::size_t cell, std::uint8_t byte);
    void restarted();
    // Another ECU: nothing is known of its map.
    void forget();

    // Nothing for a cell that the line has told nothing of.
    [[nodiscard]] std::optional<std::uint8_t> working(std::size_t cell) const;
    [[nodiscard]] std::optional<std::uint8_t> kept(std::size_t cell) const;

    static constexpr std::size_t kHalf = 160;  // cells that one frame carries

private:
    struct Cell {
        std::optional<std::uint8_t> working;
        std::optional<std::uint8_t> kept;
        std::optional<std::uint8_t> onItsWay;

        // The ECU runs on this byte. `stores`: the order to store followed what was sent last.
        void show(std::uint8_t byte, bool stores);
    };
    [[nodiscard]] Cell& at(std::size_t cell);
    [[nodiscard]] const Cell& at(std::size_t cell) const;

    std::array<Cell, core::kMapSize> cells_{};
    bool storesNext_ = false;  // the order to store went out after the last byte
};

class EcuMaps {
public:
    EcuMap fuel, ignition, pwm;

    // A restart ends the save of a PWM table, which has no other answer.
    void restarted();
    // Another connection. The ECU may have restarted unheard.
    void connected();
    // The ECU has named itself. One that names itself otherwise than the last one has maps of its own; two that name
    // themselves alike are taken for the same.
    void identified(std::span<const std::uint8_t> identity);
    // A byte of the EEPROM that was read or written.
    void eepromHas(const core::ParameterAddresses& places, int address, std::uint8_t byte);

private:
    std::vector<std::uint8_t> identity_;
};

struct MapCell {
    EcuMap EcuMaps::*map;
    std::size_t cell;
};
// The cell that the EEPROM keeps at this address; nothing where it keeps something else. Of large maps only the first
// halves have known places.
[[nodiscard]] std::optional<MapCell> mapCellAt(const core::ParameterAddresses& places, int address);

}  // namespace korvane::link
