// The names that the program's modules offer to scripts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "analysis/clsInjAnalyser.h"
#include "analysis/clsSteadyAgent.h"
#include "console/names/Names.h"
#include "core/EepromAccess.h"
#include "core/tables/SharedTables.h"
#include "keep/compare/Source.h"
#include "keep/restore/RestoreContext.h"
#include "keep/restore/RestoreRun.h"
#include "live/FrmSarn2.h"
#include "logs/clsTXTdata.h"
#include "maps/Frm3Dmap.h"
#include "maps/history/MapUndo.h"
#include "settings/FrmMisc.h"

namespace korvane::console {

// All shared tables and values under their own names, and the parameter address variables. What a name reaches must
// outlive `names`.
void registerSharedTables(Names& names, core::SharedTables& tables);

// The members of frmSarn2 that are no controls: the state of the receive machine and of the connection; and linkState.
void registerMainWindow(Names& names, live::FrmSarn2& window);

// The members and procedures of the one clsInjAnalyser; its procedures also by their bare names.
void registerAnalyser(Names& names, analysis::clsInjAnalyser& analyser);

// The members and procedures of the steady agent. Procedures act on the map of the window that `geometry` gives.
void registerSteadyAgent(Names& names, analysis::clsSteadyAgent& agent,
                         const std::function<maps::MapGeometry()>& geometry);

// CalcPower, and the procedures of frm3Dmap.
void registerMapTools(Names& names, maps::Frm3Dmap& view, core::SharedTables& tables);

// history: its steps, its place, and the procedures that walk through it, with the map window in use.
void registerHistory(Names& names, maps::MapUndo& undo);

// The members of frmMisc that are no controls, and its procedure UpdateReadEE.
void registerSettings(Names& names, settings::FrmMisc& window);

// The members and procedures of the restore of settings.
void registerRestore(Names& names, keep::RestoreRun& run);

// The members and procedures of the log viewer's reader. `reader` is null while the viewer is closed: members are null
// then, and procedures fail.
void registerLog(Names& names, logs::clsTXTdata*& reader);

// keep.compare, which opens the comparison of two sources.
void registerComparison(Names& names, std::function<void(const keep::Source& left, const keep::Source& right)> open);

// keep: the restore points, the newest is 1, and the procedures that make, restore and remove them. `context` outlives
// `names`.
void registerRestorePoints(Names& names, const keep::RestoreContext& context, std::function<void()> open);

struct Procedures {
    core::EepromAccess& eeprom;
    std::filesystem::path folder;  // of ini files that are named without one
    std::function<void(double value, int series, int trend)> pushTrendSample;
};

// WriteEE, ReadEE, ReadEE16, ReadIniSection, WriteIniSection, ComplementDigits and pushTrendSample.
void registerProcedures(Names& names, Procedures procedures);

}  // namespace korvane::console
