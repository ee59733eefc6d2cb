// What the ECU has in its EEPROM, as far as the line has told.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "controls/Object.h"
#include "core/tables/EepromShadow.h"

namespace korvane::link {

// How the program knows a cell.
enum class Known : std::uint8_t {
    No,
    Told,  // the ECU has sent it
    Sent,  // it was sent to the ECU, which does not acknowledge it, and has not been read back
};

struct EepromCell {
    std::uint8_t byte = 0;
    Known known = Known::No;

    friend bool operator==(const EepromCell&, const EepromCell&) = default;
};

using EepromCells = std::array<EepromCell, core::kEepromSize>;

// Observers are told when a cell has another byte, or is known in another way. An address outside the EEPROM is left
// out: scripts may give a parameter any address.
class EcuEeprom : public controls::Object {
public:
    void told(std::int64_t address, std::uint8_t byte) { set(address, {byte, Known::Told}); }
    void sent(std::int64_t address, std::uint8_t byte) { set(address, {byte, Known::Sent}); }
    // The ECU has stored a byte of its own there.
    void lost(std::int64_t address) { set(address, {}); }
    // There may be another ECU on the line.
    void forget();

    [[nodiscard]] const EepromCells& cells() const { return cells_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void set(std::int64_t address, EepromCell cell);

    EepromCells cells_{};
};

}  // namespace korvane::link
