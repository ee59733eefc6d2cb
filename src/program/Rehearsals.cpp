#include "program/Rehearsals.h"

#include <algorithm>
#include <utility>

#include "maps/grid/MapConversions.h"
#include "program/Comparisons.h"

namespace korvane::program {

Rehearsals::Rehearsals(const core::SharedTables& tables, const analysis::clsSteadyAgent& agent,
                       Comparisons& comparisons)
    : tables_(tables), agent_(agent), comparisons_(comparisons) {}

std::string Rehearsals::begin(const logs::clsTXTdata& log) {
    run_.reset();
    auto start = agent_.rehearsalStart(maps::geometryOf(tables_.SWType));
    if (start.missing.empty()) {
        log_ = log.lastLoad().path.filename().string();
        run_ = std::make_unique<analysis::LogRehearsal>(log, start, tables_);
    }
    return std::move(start.missing);
}

std::string Rehearsals::finish() {
    const auto run = std::exchange(run_, nullptr);
    if (!run) {
        return {};
    }
    if (run->hasProposal()) {
        proposal_ = sideOf(*run);
        comparisons_.open({keep::Source::Kind::Proposal, {}}, {keep::Source::Kind::Desk, {}});
    }
    return run->words();
}

// Cells behind those that the agent may change are as they were; of the other maps it says nothing.
keep::Side Rehearsals::sideOf(const analysis::LogRehearsal& run) const {
    keep::Side side;
    side.name = "proposal of the steady agent, log " + log_;
    side.note = "Log " + log_ + ". " + run.words();
    auto& fuel = side.maps.front();
    fuel.size = maps::geometryOf(tables_.SWType).cells();
    std::copy_n(tables_.FuelMapOut.begin(), fuel.size, fuel.bytes.begin());
    std::ranges::copy(run.rehearsal().map(), fuel.bytes.begin());
    return side;
}

}  // namespace korvane::program
