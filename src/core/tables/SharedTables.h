// What all parts of the program share, part by part of its owner. Whoever needs one part takes that part.
#pragma once

#include <cstdint>
#include <string>

#include "core/tables/EepromShadow.h"
#include "core/tables/FirmwareIdentity.h"
#include "core/tables/LiveTable.h"
#include "core/tables/LogTable.h"
#include "core/tables/MapImages.h"

namespace korvane::core {

// Lives as long as the program and is touched only on its thread. An index that comes from outside goes through
// checked().
struct SharedTables : FirmwareIdentity, EepromShadow, MapImages, LiveTable {
    SharedTables() = default;
    SharedTables(const SharedTables&) = delete;
    SharedTables& operator=(const SharedTables&) = delete;
    ~SharedTables() = default;

    // The datalog's rows that have not been written yet.
    LogTable logData;
    std::int32_t logDataCount = 0;

    // State that windows share.
    bool useSound = false;
    bool ignWindowOpen = false;  // frmMaps_QV_ign serves the dispatcher
    std::string SaveFileName;    // the settings file chosen last for writing
    std::string LoadFileName;    // and for reading
};

}  // namespace korvane::core
