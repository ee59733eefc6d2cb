// What the reads and saves of a window work with.
#pragma once

#include "controls/Timer.h"
#include "controls/Window.h"
#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "fields/Answers.h"
#include "fields/VerifyReport.h"
#include "link/ConnectionPanel.h"

namespace korvane::fields {

// All of it outlives its users.
struct Context {
    controls::Window& window;
    const core::SharedTables& tables;
    core::EepromAccess& eeprom;
    controls::Timer& poll;                 // of the live data
    link::LinkState* linkState = nullptr;  // is told of each read and save
    Answers* answers = nullptr;            // is told of each value
    // Where saves are read back if the tuner wants it, and what is told of that; both or none.
    link::ConnectionPanel* connection = nullptr;
    VerifyReport* verifyReport = nullptr;
};

}  // namespace korvane::fields
