// What the steady agent knows, in words.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/steady/SteadyAgent.h"

namespace korvane::analysis {

// "120 samples, 14 rejected, 2.1 % lean, spread 1.3 %, confidence 0.83, baseline 50, now 52, on target"
[[nodiscard]] std::string wordsOf(const steady::CellReport& report, std::uint8_t baseline);
// "12 fuel cut, 3 link late", the most frequent first. `watchedLong` as for samplesOf().
[[nodiscard]] std::string reasonsOf(const std::array<std::uint32_t, steady::kVerdicts>& counts, bool watchedLong);
// "20 to 40 %: 312 ms, give or take 24"
[[nodiscard]] std::string wordsOf(const steady::Zone& zone);
// A row for each verdict that there was, that of the used ones always. An engine that has been watched for long has not
// just started; what was counted before is still in the counts.
[[nodiscard]] std::vector<std::string> samplesOf(const steady::SteadyAgent& agent, bool watchedLong);

}  // namespace korvane::analysis
