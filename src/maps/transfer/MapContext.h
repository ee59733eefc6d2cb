// What the map windows use besides their own controls.
#pragma once

#include <functional>
#include <string_view>

#include "core/EepromAccess.h"
#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"
#include "link/ConnectionPanel.h"
#include "maps/panes/Analysis.h"

namespace korvane::maps {

class Frm3Dmap;
class FrmInjScale;
class MapUndo;
class SteadyTuner;

// All of it outlives every map window.
struct MapContext {
    core::SharedTables& tables;
    link::ConnectionPanel& connection;  // MSComm1 and the poll timer, TimerRequestData
    Analyser& analyser;
    Frm3Dmap& frm3Dmap;
    FrmInjScale& frmInjScale;
    core::EepromAccess& eeprom;
    core::MapHistory* history = nullptr;  // of the working maps; null where nobody keeps one
    MapUndo* undo = nullptr;              // the keys that walk through it; null together with it
    SteadyTuner* steady = nullptr;        // null where there is none
    // Told what is about to replace the working maps: "read", "file loaded".
    std::function<void(std::string_view what)> replacing = {};

    void announceReplacing(std::string_view what) const {
        if (replacing) {
            replacing(what);
        }
    }
};

}  // namespace korvane::maps
