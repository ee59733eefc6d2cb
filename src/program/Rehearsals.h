// The steady agent on a recorded log, and the comparison with what it proposes.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "analysis/LogRehearsal.h"
#include "analysis/clsSteadyAgent.h"
#include "core/tables/SharedTables.h"
#include "keep/compare/Side.h"
#include "trend/Rehearser.h"

namespace korvane::program {

class Comparisons;

// Changes nothing and sends nothing.
class Rehearsals : public trend::Rehearser {
public:
    Rehearsals(const core::SharedTables& tables, const analysis::clsSteadyAgent& agent, Comparisons& comparisons);

    std::string begin(const logs::clsTXTdata& log) override;
    bool goOn() override { return run_ && run_->goOn(); }
    [[nodiscard]] double share() const override { return run_ ? run_->share() : 1.0; }
    std::string finish() override;
    void drop() override { run_.reset(); }

    // What the last rehearsal that came to its end has proposed.
    [[nodiscard]] const std::optional<keep::Side>& proposal() const { return proposal_; }

private:
    [[nodiscard]] keep::Side sideOf(const analysis::LogRehearsal& run) const;

    const core::SharedTables& tables_;
    const analysis::clsSteadyAgent& agent_;
    Comparisons& comparisons_;
    std::unique_ptr<analysis::LogRehearsal> run_;
    std::string log_;
    std::optional<keep::Side> proposal_;
};

}  // namespace korvane::program
