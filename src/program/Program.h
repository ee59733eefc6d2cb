// The program: owner of the shared tables and the windows, and what connects them.
#pragma once

#include <filesystem>

#include "analysis/clsInjAnalyser.h"
#include "analysis/clsSteadyAgent.h"
#include "controls/WindowShelf.h"
#include "core/EepromAccess.h"
#include "core/history/MapHistory.h"
#include "core/tables/SharedTables.h"
#include "keep/Keeper.h"
#include "keep/desk/DeskKeeper.h"
#include "keep/restore/RestoreRun.h"
#include "link/Connection.h"
#include "link/Dispatcher.h"
#include "live/EepromImage.h"
#include "live/FrmSarn2.h"
#include "live/LiveUpdate.h"
#include "logs/LogWriter.h"
#include "logs/clsTXTdata.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "maps/grid/MapConversions.h"
#include "maps/history/MapUndo.h"
#include "maps/transfer/MapContext.h"
#include "platform/Machine.h"
#include "program/Comparisons.h"
#include "program/LogViewer.h"
#include "program/MapWindows.h"
#include "program/ReadoutWindows.h"
#include "program/Rehearsals.h"
#include "program/RestorePoints.h"
#include "settings/FrmMisc.h"
#include "trend/MainTrends.h"

namespace korvane::program {

// Runs on any machine. Everything it owns exists as long as it does; it must outlive every handler that is running.
class Program {
public:
    explicit Program(platform::Machine& machine);

    // Creates and loads the main window; its load starts everything else.
    void start();
    // Connects to COM`port` as the tuner would.
    void connectTo(int port);
    // Opens the window for this kind of file with the file in it. Sends nothing.
    void openFile(const std::filesystem::path& file);
    // Closes the port as the tuner would.
    void disconnect();
    // Closes the main window as its close box does, and returns when the program has ended.
    void quit();
    [[nodiscard]] bool ended() const { return ended_; }
    controls::Event<> Ended;  // the main window has been unloaded

    [[nodiscard]] core::SharedTables& tables() { return tables_; }
    // Of the working maps. Who changes them without a MapHistory::Change calls noted() behind it.
    [[nodiscard]] core::MapHistory& history() { return history_; }
    [[nodiscard]] maps::MapUndo& undo() { return undo_; }
    [[nodiscard]] live::FrmSarn2& frmSarn2() { return frmSarn2_; }
    [[nodiscard]] core::EepromAccess& eeprom() { return eeprom_; }
    [[nodiscard]] link::Dispatcher& dispatcher() { return dispatcher_; }
    [[nodiscard]] link::Connection& connection() { return connection_; }
    [[nodiscard]] link::Windows& windows() { return windows_; }
    [[nodiscard]] logs::LogWriter& logWriter() { return logWriter_; }
    // The reader of the open log viewer; null while there is none. The viewer's owner sets it.
    logs::clsTXTdata* clsTXTdata = nullptr;
    [[nodiscard]] trend::MainTrends& trends() { return trends_; }
    [[nodiscard]] analysis::clsInjAnalyser& analyser() { return analyser_; }
    [[nodiscard]] analysis::clsSteadyAgent& steadyAgent() { return steadyAgent_; }
    [[nodiscard]] settings::FrmMisc& frmMisc() { return frmMisc_; }
    [[nodiscard]] maps::Frm3Dmap& frm3Dmap() { return frm3Dmap_; }
    // Of the maps of the ECU that has named itself last.
    [[nodiscard]] maps::MapGeometry mapGeometry() const { return maps::geometryOf(tables_.SWType); }
    [[nodiscard]] MapWindows& mapWindows() { return mapWindows_; }
    [[nodiscard]] ReadoutWindows& readoutWindows() { return readoutWindows_; }
    [[nodiscard]] keep::Keeper& keeper() { return keeper_; }
    [[nodiscard]] RestorePoints& restorePoints() { return restorePoints_; }
    [[nodiscard]] Comparisons& comparisons() { return comparisons_; }
    [[nodiscard]] const Rehearsals& rehearsals() const { return rehearsals_; }
    [[nodiscard]] LogViewer& logViewer() { return logViewer_; }
    [[nodiscard]] keep::RestoreRun& restoreRun() { return restoreRun_; }

private:
    // The buttons of the main window that open the others.
    void connectButtons();
    void connectHistory();
    void connectKeeper();
    void connectSteadyAgent();
    void mainWindowLoad();
    void mainWindowUnload(bool& stays);
    void nameChannels();
    // One at a time, each made anew for its opening.
    void openDebugWindow();
    void openPowerCalc();
    void openDoctor();
    void openLink();
    void openHistory();
    void openSteadyAgent();

    platform::Machine& machine_;
    core::SharedTables tables_;
    core::MapHistory history_;
    link::Windows windows_;
    live::FrmSarn2 frmSarn2_;
    core::EepromAccess eeprom_;
    keep::Keeper keeper_;
    keep::DeskKeeper desk_;
    keep::RestoreRun restoreRun_;
    live::EepromImage eepromImage_;
    settings::FrmMisc frmMisc_;
    link::Dispatcher dispatcher_;
    link::Connection connection_;
    trend::MainTrends trends_;
    live::LiveUpdate liveUpdate_;
    logs::LogWriter logWriter_;
    analysis::clsInjAnalyser analyser_;
    analysis::clsSteadyAgent steadyAgent_;
    maps::Frm3Dmap frm3Dmap_;
    maps::FrmInjScale frmInjScale_;
    maps::MapUndo undo_;
    maps::MapContext mapContext_;
    MapWindows mapWindows_;
    ReadoutWindows readoutWindows_;
    Rehearsals rehearsals_;
    LogViewer logViewer_;
    Comparisons comparisons_;
    RestorePoints restorePoints_;
    controls::WindowShelf shelf_;  // the windows that nobody else has to reach
    bool ended_ = false;
};

}  // namespace korvane::program
