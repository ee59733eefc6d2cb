// How far the map was from its targets over the time of an agent's run.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace korvane::maps {

struct ErrorPoint {
    double seconds = 0.0;  // since the start of the run
    double mean = 0.0;     // per cent of fuel, without sign, weighted
    double worst = 0.0;

    bool operator==(const ErrorPoint&) const = default;
};

// Keeps a run of any length in few points: when there are too many, each second one goes, and from then on they stand
// twice as far apart.
class ErrorTrend {
public:
    static constexpr std::size_t kMost = 400;
    static constexpr double kFirstStep = 5.0;  // seconds

    // A new run, of the agent of that name.
    void begin(std::string agent, double seconds);
    // Whether a point is due.
    [[nodiscard]] bool isDue(double seconds) const { return seconds >= next_; }
    void add(double seconds, double mean, double worst);
    // Nothing is known yet.
    void skip(double seconds) { next_ = seconds + step_; }

    [[nodiscard]] const std::string& agent() const { return agent_; }
    [[nodiscard]] std::span<const ErrorPoint> points() const { return points_; }

private:
    std::string agent_;
    std::vector<ErrorPoint> points_;
    double start_ = 0.0;
    double step_ = kFirstStep;
    double next_ = 0.0;
};

}  // namespace korvane::maps
