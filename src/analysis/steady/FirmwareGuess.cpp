#include "analysis/steady/FirmwareGuess.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

namespace {

constexpr int kSome = 300;  // frames

bool tells(double duty, double rpm) {
    constexpr double kShortest = 8.0;  // counts: one is 12 per cent of it
    constexpr double kFull = 250.0;    // the injectors are always open
    return duty >= kShortest && duty <= kFull && rpm > 0.0;
}

double seenOf(double duty, double rpm) {
    return std::log(duty / rpm) + 10.0;
}

}  // namespace

// What is further from the mean than `most` counts as no further: a few frames with an enrichment say nothing of the
// map.
void FirmwareGuess::Spread::add(double value, double share, double most) {
    const double near = mean + std::clamp(value - mean, -most, most);
    mean += (near - mean) * share;
    square += (near * near - square) * share;
}

void FirmwareGuess::add(double duty, double rpm, double oneByte, double fourBytes) {
    if (!tells(duty, rpm)) {
        return;
    }
    constexpr double kMemory = 1.0 / 4000.0;
    constexpr double kMost = 0.1;
    const double most = count_ < kSome ? 1e9 : kMost;
    const double weight = duty * duty;  // a count's share of it is its error
    weight_ = weight_ * (1.0 - kMemory) + weight;
    const double share = weight / weight_;
    const double seen = seenOf(duty, rpm);
    one_.add(seen - oneByte, share, most);
    four_.add(seen - fourBytes, share, most);
    ++count_;
    decide();
}

std::optional<double> FirmwareGuess::off(double duty, double rpm, double oneByte, double fourBytes) const {
    if (firmware_ == Firmware::Unknown || !tells(duty, rpm)) {
        return std::nullopt;
    }
    const bool one = firmware_ == Firmware::OneByte;
    return seenOf(duty, rpm) - (one ? oneByte + one_.mean : fourBytes + four_.mean);
}

// Evidence that is nearly even decides nothing, however much there is of it.
void FirmwareGuess::decide() {
    constexpr int kMany = 3000;
    constexpr double kClear = 0.7;
    constexpr double kEven = 0.9;
    const double one = std::max(one_.variance(), 1e-12);
    const double four = std::max(four_.variance(), 1e-12);
    const double ratio = std::min(one, four) / std::max(one, four);
    const double least = count_ < kMany || firmware_ != Firmware::Unknown ? kClear : kEven;
    if (count_ < kSome || ratio > least) {
        return;
    }
    firmware_ = one < four ? Firmware::OneByte : Firmware::FourBytes;
}

}  // namespace korvane::steady
