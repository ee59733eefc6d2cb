// Tables in text files, one entry a line: EEPROM images and lambda setpoints.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "platform/Dialogs.h"
#include "platform/DiskFlush.h"
#include "platform/RuntimeError.h"

namespace korvane::core {

// Write the elements from the first to the last but one: callers size their arrays one longer than the data. A number
// has a blank before and behind it. The file is made, or replaced, in one step at the end. False after a failure, which
// has been shown in the message box "Error tablesave: " with its description.
bool SaveByteTable(const std::filesystem::path& path, std::span<const std::uint8_t> bytes, platform::Dialogs& dialogs,
                   const platform::DiskFlush& toDisk = {});
bool SaveTextTable(const std::filesystem::path& path, std::span<const std::string> lines, platform::Dialogs& dialogs);

// Shows that message box.
void tellFailedTable(const platform::RuntimeError& failure, platform::Dialogs& dialogs);

struct TableLoad {
    int lastIndex = 0;  // of the entries filled, 0 for none
    int error = 0;      // number of the failure that ended the reading, 0 for none
};

// Fills `lines` from index 1 on, index 0 stays. A file with more lines than the table takes ends the reading with error
// 9, and what was read stays; one that can't be read gives the failure's number.
[[nodiscard]] TableLoad LoadTextTable(const std::filesystem::path& path, std::span<std::string> lines);

}  // namespace korvane::core
