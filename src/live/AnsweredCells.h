// Which EEPROM cells the ECU has told since this object was made.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "link/FrameWitness.h"

namespace korvane::live {

class AnsweredCells : private link::FrameWitness {
public:
    // Listens for addresses 0 to `last`.
    AnsweredCells(link::FrameWitnesses& witnesses, int last);
    AnsweredCells(const AnsweredCells&) = delete;
    AnsweredCells& operator=(const AnsweredCells&) = delete;
    ~AnsweredCells() override { witnesses_.remove(*this); }

    // How many of the addresses were not told.
    [[nodiscard]] int missing() const;

private:
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void note(int address);

    link::FrameWitnesses& witnesses_;
    std::vector<bool> told_;
};

}  // namespace korvane::live
