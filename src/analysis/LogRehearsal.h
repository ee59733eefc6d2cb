// A recorded log as a drive for the steady agent.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/EngineFacts.h"
#include "analysis/Rehearsal.h"
#include "core/tables/LiveTable.h"
#include "logs/clsTXTdata.h"

namespace korvane::analysis {

// With what a rehearsal begins, or in words why it can't.
struct RehearsalStart {
    std::string missing;
    steady::SteadySetup setup;
    LoadRule load;
    maps::MapGeometry geometry = maps::kOrdinaryMaps;
    std::vector<std::uint8_t> map;
    std::vector<std::uint8_t> baseline;
};

// Rows that have the same second are taken to be even in it. A row without one of the numbers is left out. A pause of
// the log is a gap in the drive and stops nothing. `log` must not be loaded anew meanwhile.
class LogRehearsal {
public:
    // `channels` has gain and offset of the live channels, by which a logged value is the ECU's number again.
    LogRehearsal(const logs::clsTXTdata& log, const RehearsalStart& start, core::LiveTable channels);

    // Takes some thousand rows. False when it is done.
    bool goOn();
    // Of the rows, 0 to 1.
    [[nodiscard]] double share() const;

    // Whether the log had what the agent needs; once it is done.
    [[nodiscard]] bool hasProposal() const;
    [[nodiscard]] std::string words() const;
    [[nodiscard]] const Rehearsal& rehearsal() const { return rehearsal_; }

private:
    using Cells = std::array<std::string_view, static_cast<std::size_t>(logs::kRateColumn)>;

    [[nodiscard]] static Cells cellsOf(std::string_view line);
    [[nodiscard]] std::int32_t rows() const;
    [[nodiscard]] std::string_view timeOf(std::int32_t row) const;
    [[nodiscard]] std::int32_t endOfSecond(std::int32_t row) const;
    void takeSecond();
    void leaveOut(std::int32_t first, std::int32_t end);
    void takeRow(std::int32_t row, double seconds);
    [[nodiscard]] double withoutPauses(double seconds);
    [[nodiscard]] bool readCells(std::int32_t row);
    void setChannel(int column, double value);
    void advanceTo(std::string_view time);
    [[nodiscard]] std::vector<std::string_view> lacking() const;
    [[nodiscard]] std::string usedWords() const;

    const logs::clsTXTdata& log_;
    LoadRule load_;
    maps::MapGeometry geometry_;
    core::LiveTable row_;
    Rehearsal rehearsal_;
    std::vector<int> needed_;  // columns
    std::vector<std::int32_t> missing_;
    std::int32_t next_ = 1;
    std::int32_t lastRow_ = 0;           // that the agent was given
    double second_ = 0.0;                // that is being read, from the first day's midnight on
    std::optional<int> ofDay_;           // the same, of its day
    std::int32_t lastCount_ = 0;         // rows of the second before
    double skipped_ = 0.0;               // seconds of pauses
    std::optional<double> lastSeconds_;  // that the agent was told
};

}  // namespace korvane::analysis
