// How long the log viewer lives.
#pragma once

#include <filesystem>
#include <memory>

#include "controls/WindowShelf.h"
#include "core/tables/LiveTable.h"
#include "live/FrmSarn2.h"
#include "live/LiveUpdate.h"
#include "trend/FrmTrend_txt.h"

namespace korvane::program {

// One viewer at a time, made anew for each opening, so that it starts without a log.
class LogViewer {
public:
    // `reader` is kept at the open viewer's, null without one.
    LogViewer(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live, logs::clsTXTdata*& reader);

    // For the viewers that are opened from now on; outlives them.
    void useRehearser(trend::Rehearser& rehearser) { rehearser_ = &rehearser; }

    // The open one comes to the front.
    void open();
    void open(const std::filesystem::path& log);
    void unload() { shelf_.unloadAll(); }

    // Null while no viewer is open.
    [[nodiscard]] trend::FrmTrend_txt* window() const { return shelf_.open<trend::FrmTrend_txt>(); }

private:
    [[nodiscard]] std::unique_ptr<trend::FrmTrend_txt> make();

    live::FrmSarn2& frmSarn2_;
    live::LiveUpdate& liveUpdate_;
    core::LiveTable& live_;
    logs::clsTXTdata*& reader_;
    trend::Rehearser* rehearser_ = nullptr;
    controls::WindowShelf shelf_;
};

}  // namespace korvane::program
