// Says of each live frame whether its mixture, and whether its lambda, can be used.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "analysis/steady/BurnHistory.h"
#include "analysis/steady/Frame.h"
#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

class SampleGate {
public:
    // Begins anew, with all counts 0.
    void reset();

    // What is wrong with the mixture that is burnt now. To be called once for each frame, in order.
    [[nodiscard]] Verdict mixture(const Frame& frame, const SteadySetup& setup, const Place& place);
    // What is wrong with the reading itself.
    [[nodiscard]] Verdict reading(const Frame& frame);
    // What is wrong with a sample whose mixture was `burnt`; `lag` of the sensor in seconds.
    [[nodiscard]] static Verdict passed(const Smeared& burnt, double lag);

    // Seconds after a fuel cut until nothing of it is left at a sensor with that lag.
    [[nodiscard]] static double clearingTime(double lag) { return 6.0 * lag + 0.15; }

    void count(Verdict verdict) { ++counts_.at(static_cast<std::size_t>(verdict)); }
    [[nodiscard]] std::uint64_t counted(Verdict verdict) const { return counts_.at(static_cast<std::size_t>(verdict)); }

    [[nodiscard]] static bool cut(const Frame& frame);
    [[nodiscard]] static bool turning(const Frame& frame);

private:
    void watchStill(const Frame& frame);
    [[nodiscard]] bool justStarted(const Frame& frame);
    [[nodiscard]] bool enriched(const Frame& frame, const SteadySetup& setup) const;
    [[nodiscard]] Verdict running(const Frame& frame, const SteadySetup& setup);
    void remember(const Frame& frame, bool late);

    std::array<std::uint64_t, kVerdicts> counts_{};
    Frame last_;
    Frame rateFrom_;  // what the rates of throttle and load are taken from
    bool begun_ = false;
    double startedAt_ = 0.0;
    bool turned_ = false;
    // The reading has not moved by a single step since then, though since `movedAt` it ought to have.
    struct Still {
        double lambda = 0.0;
        double since = 0.0;
        Place place;
        std::optional<double> movedAt;
    };
    Still still_;
};

}  // namespace korvane::steady
