#include "analysis/SteadyLog.h"

#include <cmath>
#include <utility>

#include "core/Numbers.h"
#include "core/TimeText.h"
#include "core/files/AppendText.h"
#include "core/files/TextFile.h"
#include "platform/DebugLog.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace korvane::analysis {

std::string SteadyLog::fileName() const {
    return "SteadyAgent" + core::dateText(machine_.pump.wallTime()) + ".txt";
}

// Two decimals.
std::string SteadyLog::number(double value) const {
    return core::withDecimal(core::textOf(std::round(value * 100.0) / 100.0), machine_.decimal);
}

// "12:00:05 CELL 17 50 51 LEFT 0.31 CONFIDENCE 0.83": from, to, and the per cent of fuel that are still missing.
std::string SteadyLog::lineOf(const steady::CellChange& change, const steady::SteadyAgent& agent) const {
    std::string line = core::timeText(machine_.pump.wallTime()) + " CELL " + std::to_string(change.cell) + ' ' +
                       std::to_string(change.from) + ' ' + std::to_string(change.to);
    if (change.putBack) {
        return line + " BACK " + std::string(steady::wordsOf(agent.stopReason()));
    }
    const auto report = agent.cell(change.cell);
    return line + " LEFT " + number(report.errorPercent) + " CONFIDENCE " + number(report.confidence) +
           (change.carried ? " CARRIED" : "");
}

void SteadyLog::write(std::span<const steady::CellChange> changes, const steady::SteadyAgent& agent) {
    std::string text;
    for (const auto& change : changes) {
        text += change.isRepeat() ? std::string() : lineOf(change, agent).append(core::kLineEnd);
    }
    if (!text.empty()) {
        append(text);
    }
}

void SteadyLog::follow(const steady::SteadyAgent& agent) {
    if (std::exchange(told_, agent.stopReason()) != agent.stopReason()) {
        stopped(steady::wordsOf(agent.stopReason()));
    }
}

// "12:00:05 STOP link late"
void SteadyLog::stopped(std::string_view reason) {
    append(core::timeText(machine_.pump.wallTime()) + " STOP " + std::string(reason) + std::string(core::kLineEnd));
}

void SteadyLog::append(const std::string& text) {
    try {
        core::appendText(machine_.folder / fileName(), text);
    } catch (const platform::RuntimeError& failure) {
        if (!failed_) {
            machine_.log.write(std::string("The steady agent's log can't be written: ") + failure.what());
        }
        failed_ = true;
    }
}

}  // namespace korvane::analysis
