// The virtual ECU at the other end of a line in memory.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ecu/VirtualEcu.h"
#include "platform/virtual/MemoryLine.h"

namespace korvane::support {

class EcuDevice : public platform::LineDevice {
public:
    explicit EcuDevice(const ecu::EcuSettings& settings = {}) : ecu_(settings) {}

    void setBaud(int baud) override { ecu_.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { ecu_.receive(byte, at); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu_.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override { ecu_.take(at, out); }

    [[nodiscard]] std::span<const std::uint8_t> eeprom() const { return ecu_.eeprom(); }
    [[nodiscard]] long sparksFired() const { return ecu_.sparksFired(); }

private:
    ecu::VirtualEcu ecu_;
};

}  // namespace korvane::support
