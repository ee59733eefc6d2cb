// Seeded noise: the same seed gives the same numbers on every machine.
#pragma once

#include <array>
#include <cstdint>

namespace korvane::ecu {

// xoshiro256**, started by splitmix64.
class Noise {
public:
    explicit Noise(std::uint64_t seed);

    [[nodiscard]] std::uint64_t next();
    // From 0 up to, but not including, 1.
    [[nodiscard]] double uniform();
    // Bell-shaped with mean 0 and standard deviation 1, never beyond +-3.47 (four uniform numbers summed).
    [[nodiscard]] double bell();
    // True with probability `chance`; draws no number for a chance of 0.
    [[nodiscard]] bool happens(double chance);

private:
    std::array<std::uint64_t, 4> state_;
};

}  // namespace korvane::ecu
