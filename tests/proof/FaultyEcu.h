// The virtual ECU behind a line on which one thing goes wrong, at a byte that is counted.
#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "ecu/VirtualEcu.h"
#include "ecu/memory/EepromFile.h"
#include "platform/virtual/MemoryLine.h"

namespace korvane::proof {

enum class Fault {
    None,
    Pulled,           // the cable; the byte is the last one that arrives
    Restarted,        // the ECU, after the byte
    Killed,           // the program; the byte is the last one that arrives
    Cut,              // the ECU's power, after the byte
    CutWhileStoring,  // the ECU's power, while a cell is stored that the byte has made it store
    Lost,             // the byte
    Flipped,          // one bit of the byte
    AnswerLost,       // a byte of the ECU's
    AnswerFlipped,    // one bit of it
    Refused,          // a half of a map
    NotAcknowledged,  // a half of a map
};
[[nodiscard]] std::string_view nameOf(Fault fault);

// One thing that goes wrong.
struct Try {
    Fault fault = Fault::None;
    long byte = 0;                 // counted from 1
    int cell = 0;                  // of CutWhileStoring: counted from 0 in the order of storing
    std::string_view halves = {};  // of Refused and NotAcknowledged: as the virtual ECU's keys name them
};

// The byte made the ECU store so many cells.
struct Storing {
    long byte;
    int cells;
};

class FaultyEcu : public platform::LineDevice {
public:
    explicit FaultyEcu(const ecu::EcuSettings& settings) : ecu_(settings) {}

    [[nodiscard]] ecu::VirtualEcu& ecu() { return ecu_; }

    // Counting begins: the next byte is byte 1 of its direction. `struck` is called when the cable is pulled or the
    // program killed, and the ECU neither hears nor says anything to it from then on.
    void arm(const Try& what, platform::Micros now, std::function<void()> struck);
    // Counting ends; what went wrong stays.
    void disarm() { armed_ = false; }
    // The cable is in again, the program is another one.
    void plugIn() { plugged_ = true; }

    [[nodiscard]] long heard() const { return heard_; }
    [[nodiscard]] long said() const { return said_; }
    [[nodiscard]] const std::vector<Storing>& storings() const { return storings_; }
    // The cells that have been written since the counting began.
    [[nodiscard]] std::bitset<ecu::kEepromCells> written() const;

    void setBaud(int baud) override { ecu_.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override;
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override;
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override;

private:
    // The byte that has come may have made the ECU store something.
    void noteStoring(platform::Micros at);
    void strike(platform::Micros at);
    void cutIfDue(platform::Micros at);
    [[nodiscard]] bool hits(Fault fault, long count) const;
    [[nodiscard]] std::uint64_t cellsWritten() const;

    ecu::VirtualEcu ecu_;
    Try try_;
    std::function<void()> struck_;
    std::optional<platform::Micros> cutAt_;
    bool armed_ = false;
    bool plugged_ = true;
    long heard_ = 0;
    long said_ = 0;
    std::vector<Storing> storings_;
    std::uint64_t cellsWritten_ = 0;
    std::vector<std::uint32_t> writesBefore_;
    std::vector<std::uint8_t> taken_;
};

}  // namespace korvane::proof
