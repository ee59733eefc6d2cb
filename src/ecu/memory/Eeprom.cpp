#include "ecu/memory/Eeprom.h"

#include <algorithm>

namespace korvane::ecu {

std::uint8_t Eeprom::read(int address) const {
    const auto index = static_cast<std::size_t>(address);
    return address >= 0 && index < cells_.size() ? cells_[index] : std::uint8_t{255};
}

bool Eeprom::write(int address, std::uint8_t value, Micros at) {
    const auto index = static_cast<std::size_t>(address);
    if (address < 0 || index >= cells_.size()) {
        return false;
    }
    forgetDone(at);
    if (pending_.size() == kMostPending) {
        pending_.pop_front();
    }
    const Micros begin = std::max(free_, at);
    pending_.push_back({index, cells_[index], value, at, begin});
    cells_[index] = value;
    ++writes_[index];
    free_ = begin + kWriteTime;
    return true;
}

void Eeprom::powerFails(Micros at, Noise& noise) {
    forgetDone(at);
    if (pending_.empty()) {
        return;
    }
    Micros end = at;
    if (pending_.front().ordered == at) {
        end += 1 + static_cast<Micros>(noise.uniform() * static_cast<double>(free_ - at - 1));
    }
    while (pending_.back().begin >= end) {
        takeBackNewest();
    }
    forgetDone(end);
    if (!pending_.empty()) {
        const Write& hit = pending_.front();
        const bool erasing = end - hit.begin < kWriteTime / 2;
        const auto ones = static_cast<std::uint8_t>(noise.next() >> 56U);
        cells_[hit.address] = static_cast<std::uint8_t>((erasing ? hit.before : hit.value) | ones);
    }
    pending_.clear();
    free_ = end;
}

void Eeprom::forgetDone(Micros at) {
    while (!pending_.empty() && pending_.front().begin + kWriteTime <= at) {
        pending_.pop_front();
    }
}

void Eeprom::takeBackNewest() {
    cells_[pending_.back().address] = pending_.back().before;
    --writes_[pending_.back().address];
    pending_.pop_back();
}

}  // namespace korvane::ecu
