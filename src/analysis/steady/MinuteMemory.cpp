#include "analysis/steady/MinuteMemory.h"

#include <cmath>

namespace korvane::steady {

void MinuteMemory::reset(double seconds, const MapBytes& map) {
    marks_.fill(map);
    next_ = 0;
    markedAt_ = seconds;
}

void MinuteMemory::pass(double seconds, const MapBytes& map) {
    if (std::fabs(seconds - markedAt_) >= kInterval) {
        markedAt_ = seconds;
        marks_[next_] = map;
        next_ = (next_ + 1) % kMarks;
    }
}

void MinuteMemory::settle(std::size_t cell, std::uint8_t byte) {
    for (MapBytes& map : marks_) {
        map.at(cell) = byte;
    }
}

}  // namespace korvane::steady
