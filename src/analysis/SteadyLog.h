// The log of what the steady agent has done: a line for each change of a cell and for each stop, a file for each day.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "analysis/steady/SteadyAgent.h"
#include "platform/Machine.h"

namespace korvane::analysis {

class SteadyLog {
public:
    explicit SteadyLog(const platform::Machine& machine) : machine_(machine) {}

    // A new run: a failure is told once in each.
    void begin() {
        failed_ = false;
        told_ = steady::StopReason::None;
    }
    // To be called at each turn of the agent: a line where it has begun to stop.
    void follow(const steady::SteadyAgent& agent);
    // A line for a stop that the agent does not know the reason of.
    void stopped(std::string_view reason);
    void write(std::span<const steady::CellChange> changes, const steady::SteadyAgent& agent);
    // In the program's folder: "SteadyAgent2026-01-05.txt".
    [[nodiscard]] std::string fileName() const;

private:
    void append(const std::string& text);
    [[nodiscard]] std::string lineOf(const steady::CellChange& change, const steady::SteadyAgent& agent) const;
    [[nodiscard]] std::string number(double value) const;

    const platform::Machine& machine_;
    bool failed_ = false;
    steady::StopReason told_ = steady::StopReason::None;
};

}  // namespace korvane::analysis
