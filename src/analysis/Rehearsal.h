// The steady agent on a drive that is over.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "analysis/steady/SteadyAgent.h"

namespace korvane::analysis {

// The recorded engine ran on `recorded` throughout. The agent is told what lambda and the injectors would have shown on
// the map as it has changed it: both follow from the ratio of the fuel then and now, lambda late by its delay. The same
// frames give the same map.
class Rehearsal {
public:
    Rehearsal(const steady::SteadySetup& setup, std::span<const std::uint8_t> recorded,
              std::span<const std::uint8_t> baseline);

    // In the order of time. False once the agent has stopped by itself: what comes behind changes nothing.
    bool add(const steady::Frame& frame);

    // The drive is over: what is being put back gets there.
    void finish();

    [[nodiscard]] const steady::SteadyAgent& agent() const { return agent_; }
    [[nodiscard]] bool hasStopped() const { return agent_.state() == steady::State::Stopped; }
    // As the agent would leave it.
    [[nodiscard]] std::span<const std::uint8_t> map() const;
    // That differ from the recorded map.
    [[nodiscard]] std::size_t changedCells() const;

private:
    struct Moment {
        double seconds = 0.0;
        double moreFuel = 0.0;  // than recorded, logarithm
    };
    static constexpr std::size_t kMoments = 512;

    void begin(double seconds);
    void make(std::span<const steady::CellChange> changes);
    [[nodiscard]] double moreFuelAt(const steady::Frame& frame) const;
    [[nodiscard]] double delayOf(const steady::Frame& frame) const;
    [[nodiscard]] double moreFuelBefore(double seconds) const;
    [[nodiscard]] double lambdaOf(const steady::Frame& frame);
    void remember(const Moment& moment);

    steady::SteadySetup setup_;
    steady::PulseMap recorded_;
    steady::PulseMap present_;
    std::vector<std::uint8_t> map_;
    std::vector<std::uint8_t> baseline_;
    steady::SteadyAgent agent_;
    bool begun_ = false;
    bool hasChanged_ = false;
    std::array<Moment, kMoments> moments_{};
    std::size_t newest_ = 0;
    double lastReading_ = 0.0;  // as recorded, and as the agent was told
    double lastTold_ = 0.0;
    double last_ = 0.0;  // second of the drive
};

}  // namespace korvane::analysis
