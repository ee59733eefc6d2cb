// How late lambda is: the time of the exhaust to the sensor and the lag of the sensor, by load.
#pragma once

#include <array>
#include <optional>

#include "analysis/steady/BurnHistory.h"
#include "analysis/steady/CutTrace.h"
#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

// A stretch of load and what is known of its delay.
struct Zone {
    double loadFrom = 0.0;  // per cent
    double loadTo = 0.0;
    std::optional<double> delayMs;        // in the middle of the zone, transport and lag together; nothing: not known
    std::optional<double> uncertaintyMs;  // the truth is within so much in 95 of 100
    int steps = 0;                        // that were learnt from
    bool fixed = false;                   // by the tuner
};

// A recursive least-squares estimate of the transport delay in the middle of each zone, even in between, from lambda's
// answers to steps of the fuel. Gas under way while the load changes tells of all zones that it passed. An answer that
// can't be is left out; when several come in a row, it is the estimate that can't be, and it begins anew.
class DelayEstimator {
public:
    void reset(const std::array<double, kZones>& fixedMs);
    // The tuner's own delay of a zone, in ms; 0: it is estimated again.
    void fix(std::size_t index, double delayMs) { fixed_.at(index) = delayMs / 1000.0; }
    // With each frame: what was learnt grows less certain with time.
    void pass(double seconds);
    // `history` still has what happened since the step.
    void learn(const Answer& answer, const BurnHistory& history);

    // Seconds from the cylinders to the sensor at that row of the map, without the lag.
    [[nodiscard]] double transport(double row) const;
    [[nodiscard]] double lag() const { return lag_; }
    [[nodiscard]] bool lagKnown() const { return lags_ >= 8; }
    // As far as a zone is not known, by engine speed.
    [[nodiscard]] double transportNow(const BurnHistory& history, double rpm) const;
    [[nodiscard]] bool anyKnown() const;
    // All zones that the delay at that row is made of are known or fixed.
    [[nodiscard]] bool isKnownAt(double row) const;
    [[nodiscard]] Zone zone(std::size_t index) const;

    static constexpr std::array<double, kZones + 1> kBounds = {20.0, 40.0, 60.0, 80.0, 100.0};

private:
    using Shares = std::array<double, kZones>;

    [[nodiscard]] static Shares sharesOf(double row);
    [[nodiscard]] static double between(const Shares& delays, double row);
    [[nodiscard]] double estimated(double row) const;
    void beginSpread();
    void doubt();
    void update(const Shares& slope, double error);
    void learnLag(const Answer& answer);
    [[nodiscard]] bool known(std::size_t index) const;
    [[nodiscard]] double common() const;

    std::array<double, kZones> delay_{};                       // seconds
    std::array<std::array<double, kZones>, kZones> spread_{};  // their covariance
    std::array<int, kZones> steps_{};
    std::array<double, kZones> fixed_{};
    double time_ = 0.0;
    double frames_ = 0.075;  // seconds from one to the next, mean
    int outliers_ = 0;       // in a row
    double lag_ = 0.12;
    int lags_ = 0;
};

}  // namespace korvane::steady
