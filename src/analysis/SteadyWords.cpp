#include "analysis/SteadyWords.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>

#include "core/Numbers.h"

namespace korvane::analysis {

namespace {

std::string_view wordsOf(steady::Verdict verdict, bool watchedLong) {
    return verdict == steady::Verdict::Cranking && watchedLong ? "engine stopped, or not yet seen to run for 20 s"
                                                               : steady::wordsOf(verdict);
}

}  // namespace

std::string wordsOf(const steady::CellReport& report, std::uint8_t baseline) {
    const auto number = [](double value, double steps) { return core::textOf(std::round(value * steps) / steps); };
    std::string words = std::to_string(report.used) + " samples, " + std::to_string(report.rejected) + " rejected";
    if (report.weight > 0.0) {
        words += ", " + number(std::fabs(report.errorPercent), 10.0) +
                 (report.errorPercent < 0.0 ? " % rich" : " % lean") + ", spread " + number(report.spread, 10.0) +
                 " %, confidence " + number(report.confidence, 100.0);
    }
    words += ", baseline " + std::to_string(baseline) + ", now " + std::to_string(report.byte);
    return words + (report.carried ? ", carried, " : ", ") + std::string(steady::wordsOf(report.held));
}

std::string reasonsOf(const std::array<std::uint32_t, steady::kVerdicts>& counts, bool watchedLong) {
    std::vector<std::size_t> reasons;
    for (std::size_t reason = 1; reason < counts.size(); ++reason) {
        if (counts.at(reason) > 0) {
            reasons.push_back(reason);
        }
    }
    std::ranges::stable_sort(reasons, std::greater(), [&](std::size_t reason) { return counts.at(reason); });
    std::string words;
    for (const auto reason : reasons) {
        words += (words.empty() ? "" : ", ") + std::to_string(counts.at(reason)) + ' ' +
                 std::string(wordsOf(static_cast<steady::Verdict>(reason), watchedLong));
    }
    return words;
}

std::string wordsOf(const steady::Zone& zone) {
    const auto whole = [](double value) { return core::textOf(std::round(value)); };
    std::string words = whole(zone.loadFrom) + " to " + whole(zone.loadTo) + " %: ";
    if (zone.fixed) {
        return words + whole(zone.delayMs.value_or(0.0)) + " ms, fixed";
    }
    return zone.delayMs && zone.uncertaintyMs
               ? words + whole(*zone.delayMs) + " ms, give or take " + whole(*zone.uncertaintyMs)
               : words + "not known yet";
}

std::vector<std::string> samplesOf(const steady::SteadyAgent& agent, bool watchedLong) {
    std::vector<std::string> rows;
    for (std::size_t index = 0; index < steady::kVerdicts; ++index) {
        const auto verdict = static_cast<steady::Verdict>(index);
        const auto count = agent.counted(verdict);
        if (count > 0 || verdict == steady::Verdict::Used) {
            rows.push_back(std::to_string(count) + ' ' + std::string(wordsOf(verdict, watchedLong)));
        }
    }
    return rows;
}

}  // namespace korvane::analysis
