// Lambda statistics for each map cell, and the agent that corrects the fuel map from them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "core/SharedTables.h"
#include "live/LiveUpdate.h"
#include "maps/Analysis.h"
#include "platform/MSComm.h"
#include "platform/Machine.h"
#include "platform/clsTimer.h"

namespace korvane::analysis {

inline constexpr std::size_t kAnalysedCells = 321;  // indices 0 to 320, whatever the map

struct CellStatistics {
    float LambdaAvg = 0.0F;
    float RpmOffsetAvg = 0.0F;   // rpm above the cell's column
    float LoadOffsetAvg = 0.0F;  // load above the cell's row
    float LambdaBase = 0.0F;     // written by nothing
};

class clsInjAnalyser : public maps::Analyser, public live::InjectionAnalyser {
public:
    clsInjAnalyser(platform::Machine& machine, core::SharedTables& tables, platform::MSComm& port);
};

}  // namespace korvane::analysis
