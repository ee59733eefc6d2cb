// The grammar of a log file, defined only here.
//
//     12:00:00  892       85        21        13.8      1.02      ... 0         16        NNNNNNNNNNNNNNNNNNNN CR LF
//     |         |         |         |         |         |             |         |         |         |
//     0 Time    1 RPM     2 Twater  3 Tair    4 Voltage 5 MAP         23 Debug  24        25        26
//
// A line is 27 cells of ten characters with nothing between them, and CR LF: 272 bytes. A shorter text is padded with
// blanks, a longer one is cut, so that one of ten characters runs into the next cell. A cell that has never been stored
// holds ten NULs (N). There is no header. Numbers have the decimal separator of the system's regional settings.
//
// A reader finds cells by the blanks between them alone: where two have no blank between them it reads one, and all
// that follow move one column to the left.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/tables/LiveChannel.h"
#include "core/tables/LogTable.h"

namespace korvane::logs {

inline constexpr std::size_t kCellSize = core::LogTable::kCellSize;
inline constexpr int kWrittenColumns = core::LogTable::kColumns;
inline constexpr char kBlank = ' ';

inline constexpr int kTimeColumn = 0;
// A logged channel's column.
[[nodiscard]] constexpr int columnOf(core::LiveChannel channel) {
    return kTimeColumn + 1 + static_cast<int>(core::indexOf(channel));
}
inline constexpr int kRpmColumn = columnOf(core::LiveChannel::Rpm);
inline constexpr int kPressureColumn = columnOf(core::LiveChannel::Pressure);
inline constexpr int kRateColumn = columnOf(core::LiveChannel::UpdateSpeed);

inline constexpr std::array<std::string_view, 25> kColumnNames{
    "Time",     "RPM",       "Twater", "Tair",   "Voltage", "MAP",   "Throttle",   "Lambda", "InjTime",
    "idlePID1", "BoostPID2", "K-type", "IgnAdv", "T1",      "T2",    "T3",         "T4",     "V1",
    "V2",       "V3",        "V4",     "Accel",  "Kartta",  "Debug", "updatespeed"};

// The largest table that a reader takes.
inline constexpr int kReadColumns = 31;
inline constexpr std::int32_t kReadRows = 100'000;

}  // namespace korvane::logs
