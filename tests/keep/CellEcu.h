// An ECU that has an identity and EEPROM cells, and faults at the cell that a test names.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/virtual/MemoryLine.h"
#include "support/VirtualMachine.h"

namespace korvane::keep {

// Answers at once. Understands 'y', 'R' and 'W' as whole commands; all other bytes it drops.
class CellEcu : public platform::LineDevice {
public:
    struct Write {
        int address;
        int byte;
        std::int64_t ms;

        friend bool operator==(const Write&, const Write&) = default;
    };

    std::array<std::uint8_t, 3001> cells{};
    std::uint8_t type = 11;
    int features = 0xFFFF;
    bool mute = false;
    std::set<int> deaf;             // cells that take no write
    std::optional<int> strayTo;     // the next write goes to this address
    int flips = 0;                  // so many answers to reads have a wrong value
    std::function<void()> onWrite;  // behind each write
    std::function<void()> onRead;   // before the answer
    std::vector<Write> writes;
    std::vector<int> reads;

    [[nodiscard]] std::vector<std::pair<int, int>> written() const {
        std::vector<std::pair<int, int>> pairs;
        for (const auto& each : writes) {
            pairs.emplace_back(each.address, each.byte);
        }
        return pairs;
    }
    void send(std::uint8_t code, const support::Bytes& payload) {
        const auto bytes = support::frame(code, payload);
        out_.insert(out_.end(), bytes.begin(), bytes.end());
    }

    void setBaud(int) override {}
    void receive(std::uint8_t byte, platform::Micros at) override {
        now_ = at;
        if (command_.empty() && byte != 'y' && byte != 'R' && byte != 'W') {
            return;
        }
        command_.push_back(byte);
        const std::size_t size = command_[0] == 'y' ? 3 : command_[0] == 'R' ? 4 : 6;
        if (command_.size() == size) {
            act(std::exchange(command_, {}));
        }
    }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override {
        return out_.empty() ? std::nullopt : std::optional(now_);
    }
    void take(platform::Micros, std::vector<std::uint8_t>& out) override {
        out.insert(out.end(), out_.begin(), out_.end());
        out_.clear();
    }

private:
    void act(const support::Bytes& command) {
        const int address = command[0] == 'y' ? 0 : command[1] + 256 * command[2];
        if (command[0] == 'y') {
            send('y', {static_cast<std::uint8_t>(features / 256), static_cast<std::uint8_t>(features % 256), 0x0D, 0x3A,
                       type});  // version 3.386
        } else if (command[0] == 'W') {
            write(address, command[3]);
        } else {
            answer(address, command);
        }
    }
    void write(int address, std::uint8_t byte) {
        address = std::exchange(strayTo, std::nullopt).value_or(address);
        writes.push_back({address, byte, now_ / platform::kMicrosPerMilli});
        if (!deaf.contains(address)) {
            cells.at(static_cast<std::size_t>(address)) = byte;
        }
        if (onWrite) {
            onWrite();
        }
    }
    void answer(int address, const support::Bytes& command) {
        reads.push_back(address);
        if (onRead) {
            onRead();
        }
        if (!mute) {
            const bool flipped = flips > 0 && flips-- > 0;
            const auto byte = cells.at(static_cast<std::size_t>(address));
            send('T', {static_cast<std::uint8_t>(flipped ? byte ^ 1 : byte), command[1], command[2]});
        }
    }

    support::Bytes command_;
    support::Bytes out_;
    platform::Micros now_ = 0;
};

}  // namespace korvane::keep
