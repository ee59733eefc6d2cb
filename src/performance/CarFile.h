// Car files: what the tuning helper knows of a car, one value a line, lines ending with CR LF.
//
//     Ritmo Abarth     name; ends at the first comma, and has no blanks before it
//     3.4              final drive
//     3.583            gears 1 to 5
//     2.235
//     1.542
//     1.154
//     0.967
//     2                gear in use
//     1150             weight
//     56.6             tyre diameter in centimetres
//     2500             engine speed at which the timer starts
//     6500             and at which it stops
//
// The values are texts and are kept as they stand. Further lines are passed over.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/Dialogs.h"

namespace korvane::performance {

inline constexpr std::size_t kCarValues = 12;
using CarValues = std::array<std::string, kCarValues>;

inline constexpr std::size_t kLargestCarFile = std::size_t{64} << 10U;

// Raises RuntimeError for a file that can't be read, that is larger than kLargestCarFile (75) or that has fewer than 12
// lines (62).
[[nodiscard]] CarValues readCar(const std::filesystem::path& path);

// Replaces the file in one step. False: a failure, which the message box "Error tablesave: " and its description has
// told.
[[nodiscard]] bool saveCar(const std::filesystem::path& path, const CarValues& values, platform::Dialogs& dialogs);

}  // namespace korvane::performance
