#include "analysis/steady/FirmwareGuess.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

void FirmwareGuess::Spread::add(double value, double share) {
    mean += (value - mean) * share;
    square += (value * value - square) * share;
}

void FirmwareGuess::add(double duty, double rpm, double oneByte, double fourBytes) {
    constexpr double kShortest = 8.0;  // counts: one is 12 per cent of it
    constexpr double kFull = 250.0;    // the injectors are always open
    if (duty < kShortest || duty > kFull || rpm <= 0.0) {
        return;
    }
    constexpr double kMemory = 1.0 / 4000.0;
    const double weight = duty * duty;  // a count's share of it is its error
    weight_ = weight_ * (1.0 - kMemory) + weight;
    const double share = weight / weight_;
    const double seen = std::log(duty / rpm) + 10.0;
    one_.add(seen - oneByte, share);
    four_.add(seen - fourBytes, share);
    ++count_;
    decide();
}

void FirmwareGuess::decide() {
    constexpr int kSome = 300;
    constexpr int kMany = 3000;
    constexpr double kClear = 0.7;
    const double one = std::max(one_.variance(), 1e-12);
    const double four = std::max(four_.variance(), 1e-12);
    const double ratio = std::min(one, four) / std::max(one, four);
    if (count_ < kSome || (ratio > kClear && (count_ < kMany || firmware_ != Firmware::Unknown))) {
        return;
    }
    firmware_ = one < four ? Firmware::OneByte : Firmware::FourBytes;
}

}  // namespace korvane::steady
