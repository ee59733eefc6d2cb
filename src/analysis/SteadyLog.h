// The log of what the steady agent has changed: a line for each cell, a file for each day.
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
    void begin() { failed_ = false; }
    void write(std::span<const steady::CellChange> changes, const steady::SteadyAgent& agent);
    // In the program's folder: "SteadyAgent2026-01-05.txt".
    [[nodiscard]] std::string fileName() const;

private:
    [[nodiscard]] std::string lineOf(const steady::CellChange& change, const steady::SteadyAgent& agent) const;
    [[nodiscard]] std::string number(double value) const;

    const platform::Machine& machine_;
    bool failed_ = false;
};

}  // namespace korvane::analysis
