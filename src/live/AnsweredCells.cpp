#include "live/AnsweredCells.h"

#include <algorithm>

#include "link/Frames.h"

namespace korvane::live {

AnsweredCells::AnsweredCells(link::FrameWitnesses& witnesses, int last)
    : witnesses_(witnesses), told_(static_cast<std::size_t>(last) + 1) {
    witnesses_.add(*this);
}

int AnsweredCells::missing() const {
    return static_cast<int>(std::count(told_.begin(), told_.end(), false));
}

void AnsweredCells::frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) {
    if (code == link::kEepromByteFrame && payload.size() >= 3) {
        note(payload[1] + 256 * payload[2]);
    } else if (code == link::kEepromWordFrame && payload.size() >= 4) {
        const int address = payload[2] + 256 * payload[3];
        note(address);
        note(address + 1);
    }
}

void AnsweredCells::note(int address) {
    if (const auto place = static_cast<std::size_t>(address); place < told_.size()) {
        told_[place] = true;
    }
}

}  // namespace korvane::live
