#include "ecu/engine/Noise.h"

#include <bit>

namespace korvane::ecu {

namespace {

std::uint64_t splitmix(std::uint64_t& x) {
    x += 0x9E3779B97F4A7C15U;
    std::uint64_t z = x;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
}

}  // namespace

Noise::Noise(std::uint64_t seed) : state_{} {
    for (std::uint64_t& word : state_) {
        word = splitmix(seed);
    }
}

std::uint64_t Noise::next() {
    const std::uint64_t result = std::rotl(state_[1] * 5, 7) * 9;
    const std::uint64_t shifted = state_[1] << 17U;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= shifted;
    state_[3] = std::rotl(state_[3], 45);
    return result;
}

double Noise::uniform() {
    return static_cast<double>(next() >> 11U) * 0x1.0p-53;
}

double Noise::bell() {
    std::uint64_t bits = next();
    double sum = 0.0;
    for (int part = 0; part < 4; ++part) {
        sum += static_cast<double>(bits & 0xFFFFU) * 0x1.0p-16;
        bits >>= 16U;
    }
    // Four uniform numbers have mean 2 and variance 1/3.
    constexpr double kInverseDeviation = 1.7320508075688772;
    return (sum - 2.0) * kInverseDeviation;
}

bool Noise::happens(double chance) {
    return chance > 0.0 && uniform() < chance;
}

}  // namespace korvane::ecu
