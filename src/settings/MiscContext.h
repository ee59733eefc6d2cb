// What the parts of the settings window use.
#pragma once

#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "fields/Context.h"
#include "link/ConnectionPanel.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// All of it outlives the window.
struct MiscContext {
    MiscControls& window;
    core::SharedTables& tables;
    link::ConnectionPanel& connection;  // MSComm1 and the poll timer, TimerRequestData
    core::EepromAccess& eeprom;

    fields::VerifyReport& verifyReport;  // of the saves

    // What reads and saves need of it.
    [[nodiscard]] fields::Context fieldsContext() const {
        return {window,  tables,      eeprom,       connection.TimerRequestData, &connection.linkState,
                nullptr, &connection, &verifyReport};
    }
};

}  // namespace korvane::settings
