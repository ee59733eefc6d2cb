// The EEPROM's cells: writing one takes time, and a power failure leaves the one under way half written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <utility>
#include <vector>

#include "ecu/engine/Micros.h"
#include "ecu/engine/Noise.h"

namespace korvane::ecu {

// Writes are carried out one after another, each kWriteTime after the one before it. The firmware reads what it has
// ordered, also before it is in the cells; only powerFails() makes the difference.
class Eeprom {
public:
    // The first half of it erases the cell (all bits go to 1), the second half programs it (bits go to 0).
    static constexpr Micros kWriteTime = 3'400;
    // Writes that may be under way at once; beyond that the oldest one counts as done.
    static constexpr std::size_t kMostPending = 4096;

    explicit Eeprom(std::vector<std::uint8_t> cells) : cells_(std::move(cells)), writes_(cells_.size()) {}

    [[nodiscard]] std::span<const std::uint8_t> cells() const { return cells_; }
    // 255 where there is no cell.
    [[nodiscard]] std::uint8_t read(int address) const;
    // Ordered at `at`, which must not go back. False, and nothing is done, where there is no cell.
    bool write(int address, std::uint8_t value, Micros at);

    // The power ends at `at`: the cell whose write is under way is half written, those behind it keep what they had.
    // Where writes have been ordered at that very moment and none was under way, the power lasts for a part of their
    // time that `noise` picks.
    void powerFails(Micros at, Noise& noise);

    // How often each cell has been written, half a write included; the same value again counts too.
    [[nodiscard]] std::span<const std::uint32_t> writes() const { return writes_; }

private:
    struct Write {
        std::size_t address;
        std::uint8_t before;
        std::uint8_t value;
        Micros ordered;
        Micros begin;
    };

    void forgetDone(Micros at);
    void takeBackNewest();

    std::vector<std::uint8_t> cells_;
    std::vector<std::uint32_t> writes_;
    std::deque<Write> pending_;  // in the order of their beginnings
    Micros free_ = INT64_MIN;    // when the newest write is done
};

}  // namespace korvane::ecu
