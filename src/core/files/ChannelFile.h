// The two ini files in the program's folder: names and scales of the live channels, and the sizes of the injectors.
//
//     [Par4]              Settings_par.ini, a section for each channel 0 to 30
//     MAP                 name
//     Manifold pressure   description
//     1                   gain
//     0                   offset
//     2.5                 limit
//
//     [OldInjector]       Settings.ini
//     450                 ccm per minute
//     [NewInjector]
//     550
#pragma once

#include <filesystem>
#include <string_view>

#include "core/tables/LiveTable.h"
#include "core/tables/MapImages.h"
#include "platform/Dialogs.h"

namespace korvane::core {

// The message of a folder without names for the channels. The program works on.
inline constexpr std::string_view kNoChannelFile =
    "Settings_par.ini file not found.\r\n\r\nUsing default parameter settings";

// Reads "Settings_par.ini" in `folder`. The first channel whose section can't be read and all behind it get defaults;
// below channel 20 a message box says so. A line that a section lacks leaves its field's default.
void loadChannelNames(LiveTable& tables, const std::filesystem::path& folder, platform::Dialogs& dialogs);

// Writes the channel's section back. A file that can't be written stays as it was, and no message is shown.
void SaveParDef(const LiveTable& tables, const std::filesystem::path& folder, int channel);

// Reads "Settings.ini" in `folder`: 450 and 550 where a size can't be read.
void loadInjectorSizes(MapImages& tables, const std::filesystem::path& folder);

}  // namespace korvane::core
