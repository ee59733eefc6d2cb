#include "analysis/LogRehearsal.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/tables/LiveChannel.h"
#include "logs/LogCells.h"
#include "logs/LogGrammar.h"
#include "logs/LogNumber.h"

namespace korvane::analysis {

namespace {

using core::LiveChannel;

constexpr std::int32_t kSlice = 2000;         // rows
constexpr std::int32_t kMostInASecond = 250;  // more come from a clock that stood
constexpr int kDay = 86400;

std::optional<int> secondOfDay(std::string_view time) {
    const auto digits = [&](std::size_t at) -> int {
        const auto digit = [&](std::size_t place) { return time[place] >= '0' && time[place] <= '9'; };
        return digit(at) && digit(at + 1) ? (time[at] - '0') * 10 + (time[at + 1] - '0') : kDay;
    };
    if (time.size() != 8 || time[2] != ':' || time[5] != ':') {
        return std::nullopt;
    }
    const int hour = digits(0);
    const int minute = digits(3);
    const int second = digits(6);
    return hour < 24 && minute < 60 && second < 60 ? std::optional(hour * 3600 + minute * 60 + second) : std::nullopt;
}

std::vector<int> neededColumns(const LoadRule& load, bool throttleKnown) {
    std::vector<int> columns{logs::kTimeColumn};
    for (const auto channel : {LiveChannel::Rpm, LiveChannel::WaterTemperature, LiveChannel::Lambda,
                               LiveChannel::InjectionDuty, LiveChannel::MapPlace, LiveChannel::Flags}) {
        columns.push_back(logs::columnOf(channel));
    }
    if (!load.fromThrottle) {
        columns.push_back(logs::columnOf(LiveChannel::Pressure));
    }
    if (load.fromThrottle || throttleKnown) {
        columns.push_back(logs::columnOf(LiveChannel::Throttle));
    }
    std::ranges::sort(columns);
    return columns;
}

}  // namespace

LogRehearsal::LogRehearsal(const logs::clsTXTdata& log, const RehearsalStart& start, core::LiveTable channels)
    : log_(log),
      load_(start.load),
      geometry_(start.geometry),
      row_(std::move(channels)),
      rehearsal_(start.setup, start.map, start.baseline),
      needed_(neededColumns(start.load, start.setup.throttleKnown)),
      missing_(needed_.size(), 0) {
    for (auto& channel : row_.liveValues) {
        channel.value = channel.raw = 0.0;
    }
}

LogRehearsal::Cells LogRehearsal::cellsOf(std::string_view line) {
    Cells cells;
    for (auto& cell : cells) {
        cell = logs::takeCell(line);
    }
    return cells;
}

std::string_view LogRehearsal::timeOf(std::int32_t row) const {
    auto line = log_.line(row);
    return logs::takeCell(line);
}

std::int32_t LogRehearsal::endOfSecond(std::int32_t row) const {
    const auto time = timeOf(row);
    auto end = row + 1;
    while (end <= rows() && end - row < kSlice && timeOf(end) == time) {
        ++end;
    }
    return end;
}

// A load that failed leaves rows that nothing is stored of.
std::int32_t LogRehearsal::rows() const {
    return std::min(log_.ItemCount(), log_.storedRows());
}

bool LogRehearsal::goOn() {
    const auto stopAt = next_ + kSlice;
    while (next_ <= rows() && next_ < stopAt && !rehearsal_.hasStopped()) {
        takeSecond();
    }
    const bool more = next_ <= rows() && !rehearsal_.hasStopped();
    if (!more) {
        rehearsal_.finish();
    }
    return more;
}

double LogRehearsal::share() const {
    return rows() == 0 ? 1.0 : static_cast<double>(next_ - 1) / rows();
}

// Midnight goes on with the next day. A clock that was set back begins two seconds later, which is a gap.
void LogRehearsal::advanceTo(std::string_view time) {
    const auto now = secondOfDay(time);
    if (now && ofDay_) {
        const int passed = *now - *ofDay_;
        second_ += passed >= 0 ? passed : passed < -kDay / 2 ? passed + kDay : 2;
    } else if (now) {
        second_ = *now;
    }
    ofDay_ = now ? now : ofDay_;
}

// The first second of a log and the last begin and end anywhere: there the rate is that of the neighbour.
void LogRehearsal::takeSecond() {
    const auto first = next_;
    const auto end = endOfSecond(first);
    const auto count = end - first;
    const bool countable = secondOfDay(timeOf(first)).has_value() && count <= kMostInASecond;
    if (!countable) {
        leaveOut(first, end);
        return;
    }
    advanceTo(timeOf(first));
    const bool isLast = end > rows();
    const auto neighbour = isLast ? lastCount_ : first == 1 ? endOfSecond(end) - end : count;
    const double step = 1.0 / std::max(count, neighbour);
    const double begin = first == 1 && !isLast ? 1.0 - count * step : 0.0;
    for (auto row = first; row < end && !rehearsal_.hasStopped(); ++row) {
        takeRow(row, second_ + begin + (row - first) * step);
    }
    lastCount_ = count;
    next_ = end;
}

void LogRehearsal::leaveOut(std::int32_t first, std::int32_t end) {
    for (auto row = first; row < end; ++row) {
        ++missing_.front();
        static_cast<void>(readCells(row));
    }
    next_ = end;
}

void LogRehearsal::takeRow(std::int32_t row, double seconds) {
    if (readCells(row)) {
        lastRow_ = row;
        rehearsal_.add(frameOf(row_, load_, geometry_, withoutPauses(seconds)));
    }
}

// However long nothing was logged, it is one gap, as a transfer is to the agent in the program.
double LogRehearsal::withoutPauses(double seconds) {
    constexpr double kGap = 1.0;
    const double passed = seconds - skipped_ - lastSeconds_.value_or(seconds);
    skipped_ += std::max(passed - kGap, 0.0);
    lastSeconds_ = seconds - skipped_;
    return *lastSeconds_;
}

bool LogRehearsal::readCells(std::int32_t row) {
    const Cells cells = cellsOf(log_.line(row));
    bool whole = true;
    for (std::size_t i = 1; i < needed_.size(); ++i) {
        double value = 0.0;
        const auto column = needed_[i];
        const bool good = logs::isNumber(cells.at(static_cast<std::size_t>(column)), log_.decimal(), value);
        missing_[i] += good ? 0 : 1;
        whole = whole && good;
        setChannel(column, value);
    }
    return whole;
}

void LogRehearsal::setChannel(int column, double value) {
    auto& channel = row_.liveValues.at(static_cast<std::size_t>(column - 1));
    const double told = channel.gain != 0.0 ? value / channel.gain - channel.offset : value;
    const bool isLambda = column == logs::columnOf(LiveChannel::Lambda);
    const bool isPlace = column == logs::columnOf(LiveChannel::MapPlace);
    channel.value = value;
    channel.raw = std::round(isLambda ? (told - 10.0) * 25.6 : isPlace ? value : told);
}

// Columns in which more than half of the rows have no number.
std::vector<std::string_view> LogRehearsal::lacking() const {
    std::vector<std::string_view> names;
    for (std::size_t i = 0; i < needed_.size(); ++i) {
        if (missing_[i] * 2 > next_ - 1) {
            names.push_back(logs::kColumnNames.at(static_cast<std::size_t>(needed_[i])));
        }
    }
    return names;
}

bool LogRehearsal::hasProposal() const {
    return rows() > 0 && lacking().empty();
}

// "2345 of 4500 rows used; most others: fuel cut, 800"
std::string LogRehearsal::usedWords() const {
    using steady::Verdict;
    const auto& agent = rehearsal_.agent();
    auto most = Verdict::LinkLate;
    for (std::size_t index = 1; index < steady::kVerdicts; ++index) {
        const auto verdict = static_cast<Verdict>(index);
        most = agent.counted(verdict) > agent.counted(most) ? verdict : most;
    }
    std::string words =
        std::to_string(agent.counted(Verdict::Used)) + " of " + std::to_string(next_ - 1) + " rows used";
    return agent.counted(most) == 0
               ? words
               : words + "; most others: " + std::string(wordsOf(most)) + ", " + std::to_string(agent.counted(most));
}

std::string LogRehearsal::words() const {
    if (rows() == 0) {
        return log_.lastLoad().failure == 0
                   ? "The log has no rows: there is nothing that the agent could do."
                   : "No row of the log can be read: there is nothing that the agent could do.";
    }
    if (const auto names = lacking(); !names.empty()) {
        std::string list;
        for (const auto name : names) {
            list += (list.empty() ? "" : ", ") + std::string(name);
        }
        return "The log lacks what the agent needs: " + list + '.';
    }
    const auto changed = rehearsal_.changedCells();
    const std::string cells = changed == 0 ? "no cell" : std::to_string(changed) + (changed == 1 ? " cell" : " cells");
    std::string words;
    if (rehearsal_.hasStopped()) {
        words = "The agent would stop at row " + std::to_string(lastRow_) + ", " + std::string(timeOf(lastRow_)) +
                ": " + std::string(wordsOf(rehearsal_.agent().stopReason())) + ". ";
    }
    const bool isWhole = log_.lastLoad().failure == 0;
    return words + "The agent would change " + cells + " (" + usedWords() + ")." +
           (isWhole ? "" : " The log was not read any further.");
}

}  // namespace korvane::analysis
