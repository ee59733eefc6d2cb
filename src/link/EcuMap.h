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

// What has become of what was sent of a map. Nothing in the protocol acknowledges the order to store: that it was kept
// shows only when the ECU has restarted and is read.
enum class Store : std::uint8_t {
    Nothing,       // nothing was sent or read
    Unknown,       // it was read and nothing was sent: it may be stored or not
    AsStored,      // the ECU has restarted, and nothing was sent since
    NotOrdered,    // sent, and no order to store followed
    InDoubt,       // the same over an earlier connection: the ECU may have restarted since
    Ordered,       // the order followed, and not all that was sent has been acknowledged
    Acknowledged,  // the order followed, and all that was sent has been acknowledged
    Seen,          // the ECU has restarted and shown it
    Lost,          // the ECU has restarted before the order: it runs on what it had stored before
    NotKept,       // the ECU has restarted and shown other bytes
};

// One map. The ECU runs on a working copy; what it has not stored is lost when it restarts. RuntimeError 9 for a cell
// beyond the map. Observers are told when the ECU has another map than before.
class EcuMap : public controls::Object {
public:
    // The EEPROM has no cells before the first one that is kept.
    explicit EcuMap(std::size_t firstKept = 0) : firstKept_(firstKept) {}

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
    // Another connection: the ECU may have restarted unheard, or be another one. What is known to be stored stays, but
    // is no longer fresh.
    void reconnected();
    // Another ECU: nothing is known of its map.
    void forget();

    // Nothing for a cell that the line has told nothing of.
    [[nodiscard]] std::optional<std::uint8_t> working(std::size_t cell) const;
    [[nodiscard]] std::optional<std::uint8_t> kept(std::size_t cell) const;
    // What the answer to the last read of the cell said.
    [[nodiscard]] std::optional<std::uint8_t> told(std::size_t cell) const;
    // Whether any cell was read, over whatever connection.
    [[nodiscard]] bool wasTold() const { return any(&Cell::told); }
    // Whether this connection has told what the ECU runs on.
    [[nodiscard]] bool isFresh(std::size_t cell) const { return at(cell).fresh; }
    [[nodiscard]] Store store() const { return store_; }

    static constexpr std::size_t kHalf = 160;  // cells that one frame carries

private:
    struct Cell {
        std::optional<std::uint8_t> working;
        std::optional<std::uint8_t> kept;
        std::optional<std::uint8_t> told;
        std::optional<std::uint8_t> onItsWay;
        bool fresh = false;
        std::optional<std::uint8_t> ordered;   // to be stored, and not seen behind a restart yet
        std::optional<std::uint8_t> doubtful;  // run on over an earlier connection, and not stored

        // The ECU runs on this byte. `stores`: the order to store followed what was sent last.
        void show(std::uint8_t byte, bool stores);
    };
    [[nodiscard]] Cell& at(std::size_t cell);
    [[nodiscard]] const Cell& at(std::size_t cell) const;

    void judge(Cell& cell, std::uint8_t byte);
    void resolve(Cell& cell, std::uint8_t byte);
    void beginAgain();
    void notOrdered();
    void order();
    [[nodiscard]] bool any(std::optional<std::uint8_t> Cell::*byte) const;

    std::size_t firstKept_;
    Store store_ = Store::Nothing;
    bool restarted_ = false;  // since the order to store
    std::array<Cell, core::kMapSize> cells_{};
    bool storesNext_ = false;  // the order to store went out after the last byte
};

class EcuMaps {
public:
    static constexpr std::size_t kFirstKeptPwm = 64;

    EcuMap fuel, ignition;
    EcuMap pwm{kFirstKeptPwm};

    // A restart ends the save of a PWM table, which has no other answer.
    void restarted();
    // Another connection. The ECU may have restarted unheard, or be another one.
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
