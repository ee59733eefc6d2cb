// What the ECU has of its maps, as far as the line has told.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/tables/MapImages.h"

namespace korvane::link {

// One map. The ECU runs on a working copy; what it has not stored is lost when it restarts. RuntimeError 9 for a cell
// beyond the map.
class EcuMap {
public:
    // The answer to a read of the cells from `first` on.
    void read(std::size_t first, std::span<const std::uint8_t> bytes);
    // A cell of a map that is sent as a whole. It counts when its half has been acknowledged.
    void sending(std::size_t cell, std::uint8_t byte);
    void acknowledged(std::size_t firstCell);
    // A cell that was sent alone, which the ECU does not acknowledge.
    void changed(std::size_t cell, std::uint8_t byte);
    // The ECU was told to store the map. That holds for a half that is acknowledged later, too.
    void stored();
    void restarted();

    // Nothing for a cell that the line has told nothing of.
    [[nodiscard]] std::optional<std::uint8_t> working(std::size_t cell) const;
    [[nodiscard]] std::optional<std::uint8_t> kept(std::size_t cell) const;

    static constexpr std::size_t kHalf = 160;  // cells that one frame carries

private:
    struct Cell {
        std::optional<std::uint8_t> working;
        std::optional<std::uint8_t> kept;
        std::optional<std::uint8_t> onItsWay;
    };
    [[nodiscard]] Cell& at(std::size_t cell);
    [[nodiscard]] const Cell& at(std::size_t cell) const;

    std::array<Cell, core::kMapSize> cells_{};
    bool storesNext_ = false;  // the order to store went out after the last byte
};

struct EcuMaps {
    EcuMap fuel, ignition, pwm;

    void restarted();
};

}  // namespace korvane::link
