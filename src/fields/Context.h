// What the reads and saves of a window work with.
#pragma once

#include "controls/Timer.h"
#include "controls/Window.h"
#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "fields/Answers.h"
#include "link/LinkState.h"

namespace korvane::fields {

// All of it outlives its users.
struct Context {
    controls::Window& window;
    const core::SharedTables& tables;
    core::EepromAccess& eeprom;
    controls::Timer& poll;                 // of the live data
    link::LinkState* linkState = nullptr;  // is told of each read and save
    Answers* answers = nullptr;            // is told of each value
};

}  // namespace korvane::fields
