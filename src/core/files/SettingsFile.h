// Settings files: one tune as plain text, lines ending with CR LF.
//
//     Injection                  or Injection_320; then FuelMapOut: 10 lines of 16 cells, or 16 lines of 20
//      12  12  13 ...
//     Ignition                   or Ignition_320; then IgnMapOut in the same way
//     Misc                       then one line, MiscBlock(1) to MiscBlock(9)
//     PWM                        then PwmMapOut: 10 lines of 16, the first 160 cells whatever the size of the map
//     PARAMS                     then one line for each address from 1 to 3000 that has a name or a value:
//     365#0#30#MINTHR_OFF        address, reserved, value (empty if never read), name
//
// A number of a table is a byte in decimal with a blank before and behind it. Files of older programs end after Misc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "core/tables/MapImages.h"
#include "platform/Dialogs.h"
#include "platform/DiskFlush.h"

namespace korvane::core {

struct SharedTables;

// Replaces the file at `path` in one step, or in place where no other file can be made beside it. `mapSize` is 160 or
// 320; with any other number the file begins at Misc. A failure shows the message box "Error save: " and its
// description. The file is then left as far as it came: the older one is kept beside it, with ".older-" and 12
// hexadecimal digits in its name. Returns whether all of it was written.
bool SaveSettingsFile(const std::filesystem::path& path, const SharedTables& tables, std::int16_t mapSize,
                      platform::Dialogs& dialogs, const platform::DiskFlush& toDisk = {});
// The same, but a failure leaves the older file as it was.
bool ReplaceSettingsFile(const std::filesystem::path& path, const SharedTables& tables, std::int16_t mapSize,
                         platform::Dialogs& dialogs, const platform::DiskFlush& toDisk = {});

// Where the reading of the tables ended. Numbers without a name here are the phases between these.
inline constexpr int kSettingsRead = 0;
inline constexpr int kSettingsEmpty = 1;          // no word in the file
inline constexpr int kSettingsNoFuelHeader = 2;   // another file
inline constexpr int kSettingsNoIgnition = 3;     // the file ends after the fuel map
inline constexpr int kSettingsWrongIgnition = 4;  // another header in its place
inline constexpr int kSettingsNoMisc = 5;
inline constexpr int kSettingsWrongMisc = 6;
inline constexpr int kSettingsOldType = 7;  // no PWM table: the file ends, or another section follows
inline constexpr int kSettingsNoPwm = 8;
inline constexpr int kSettingsBadFuel = 11;  // the table ends too soon, or holds what is no byte
inline constexpr int kSettingsBadIgnition = 12;
inline constexpr int kSettingsBadMisc = 13;
inline constexpr int kSettingsBadPwm = 14;

// Takes a value of the PARAMS section as it takes a reply of the ECU. An address that it can't take raises
// RuntimeError.
using UpdateReadEE = std::function<void(std::int32_t value, std::int32_t addr, bool is16)>;

// Fills FuelMapIn, IgnMapIn, MiscBlock and PwmMapIn; what was read before a fault stays. With an `updateReadEE`, and
// only after all tables, it then hands over each row of PARAMS that has a value, never as a word: a row that can't be
// read ends that with the message " Error while reading parameter data", and fewer than nine rows show "error:
// parameter data not valid". A file that can't be opened, or is larger than kLargestTextFile, raises RuntimeError.
[[nodiscard]] int LoadSettingsFile(const std::filesystem::path& path, MapImages& tables,
                                   const UpdateReadEE& updateReadEE, platform::Dialogs& dialogs);

// How many cells the tables of a file have; 0 for one that was not read whole.
struct SettingsSizes {
    std::size_t fuel = 0;
    std::size_t ignition = 0;
    std::size_t pwm = 0;
};
// The same, and how much there was.
[[nodiscard]] int LoadSettingsFile(const std::filesystem::path& path, MapImages& tables,
                                   const UpdateReadEE& updateReadEE, platform::Dialogs& dialogs, SettingsSizes& sizes);

// What a user is told for a status; empty for kSettingsRead.
[[nodiscard]] std::string settingsStatusText(int status);

}  // namespace korvane::core
