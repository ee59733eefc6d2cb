// Connects the virtual ECU to a line in memory.
#pragma once

#include "console/Console.h"
#include "ecu/VirtualEcu.h"
#include "platform/virtual/MemoryLine.h"

namespace korvane::app {

class EcuPort : public platform::LineDevice, public console::EcuControl {
public:
    EcuPort(const ecu::EcuSettings& settings, platform::EventPump& pump) : ecu_(settings), pump_(pump) {}

    // The line to notify when a changed key makes the ECU send.
    void setLine(platform::MemoryLine& line) { line_ = &line; }
    // The end of the run: writes the EEPROM where its keys say so. Empty, or what went wrong.
    [[nodiscard]] std::string finish() const { return ecu_.finish(); }

    void setBaud(int baud) override { ecu_.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { ecu_.receive(byte, at); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu_.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override { ecu_.take(at, out); }
    [[nodiscard]] std::string set(const std::string& key, const std::string& value) override;
    [[nodiscard]] long sparksFired() const override { return ecu_.sparksFired(); }
    [[nodiscard]] std::vector<std::uint32_t> writes() const override;

private:
    ecu::VirtualEcu ecu_;
    platform::EventPump& pump_;
    platform::MemoryLine* line_ = nullptr;
};

}  // namespace korvane::app
