// The steady agent on the tiny car.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "analysis/steady/SteadyAgent.h"
#include "steady/TinyCar.h"

namespace korvane::steady {

inline SteadySetup wideSetup() {
    SteadySetup setup;
    setup.leanAuthority = 15.0;
    return setup;
}

class Ride {
public:
    explicit Ride(unsigned seed, bool interpolates = true, double spoilt = 10.0, const SteadySetup& setup = wideSetup())
        : car(seed, interpolates) {
        car.spoil(spoilt);
        baseline = car.bytes();
        agent.start(setup, car.bytes(), 0.0);
    }
    void drive(double minutes) {
        for (int frame = 0; frame < static_cast<int>(minutes * 800.0); ++frame) {
            step();
        }
    }
    std::span<const CellChange> step() {
        const auto made = agent.onFrame(car.next());
        changes.insert(changes.end(), made.begin(), made.end());
        if (!loses || !loses()) {
            car.take(made);
        }
        ++frames;
        return made;
    }
    [[nodiscard]] std::uint64_t counted() const {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < kVerdicts; ++i) {
            sum += agent.counted(static_cast<Verdict>(i));
        }
        return sum;
    }

    TinyCar car;
    SteadyAgent agent;
    std::vector<std::uint8_t> baseline;
    std::vector<CellChange> changes;
    std::uint64_t frames = 0;
    std::function<bool()> loses;  // what is sent with a frame gets lost
};

}  // namespace korvane::steady
