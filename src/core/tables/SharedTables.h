// The tables that the parts of the program share. Code that needs one of these structs takes only that one.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/tables/EepromShadow.h"
#include "core/tables/FirmwareIdentity.h"
#include "core/tables/LiveTable.h"
#include "core/tables/LogTable.h"
#include "core/tables/MapImages.h"
#include "core/tables/Members.h"

namespace korvane::core {

// The datalog's rows that have not been written yet.
struct LogRows {
    LogTable logData;
    std::int32_t logDataCount = 0;
};

template <>
inline constexpr auto kMembers<LogRows> =
    std::tuple{Member{"logData", &LogRows::logData}, Member{"logDataCount", &LogRows::logDataCount}};

// State that windows share.
struct WindowState {
    bool useSound = false;
    bool ignWindowOpen = false;  // frmMaps_QV_ign serves the dispatcher
    std::string SaveFileName;    // the settings file chosen last for writing
    std::string LoadFileName;    // and for reading
};

template <>
inline constexpr auto kMembers<WindowState> =
    std::tuple{Member{"useSound", &WindowState::useSound}, Member{"ignWindowOpen", &WindowState::ignWindowOpen},
               Member{"SaveFileName", &WindowState::SaveFileName}, Member{"LoadFileName", &WindowState::LoadFileName}};

// All parts together. Exists as long as the program and is used only on its thread. An index that comes from outside
// goes through checked().
template <class... Parts>
struct TablesOf : Parts... {
    TablesOf() = default;
    TablesOf(const TablesOf&) = delete;
    TablesOf& operator=(const TablesOf&) = delete;
    ~TablesOf() = default;
};

struct SharedTables : TablesOf<FirmwareIdentity, EepromShadow, MapImages, LiveTable, LogRows, WindowState> {};

}  // namespace korvane::core
