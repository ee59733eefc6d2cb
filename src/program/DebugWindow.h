// Opens the ignition debug window, one at a time and made anew for each opening.
#pragma once

#include "controls/WindowShelf.h"
#include "link/Windows.h"
#include "live/FrmIGNDebug.h"
#include "platform/Machine.h"

namespace korvane::program {

class DebugWindow {
public:
    // While it is open, `windows` has it.
    DebugWindow(platform::Machine& machine, live::FrmSarn2& main, live::TrendSink& trends, logs::LogWriter& log,
                link::Windows& windows);

    void open();
    void unload() { shelf_.unloadAll(); }

private:
    platform::Machine& machine_;
    live::FrmSarn2& main_;
    live::TrendSink& trends_;
    logs::LogWriter& log_;
    link::Windows& windows_;
    live::FrmIGNDebug* window_ = nullptr;
    controls::WindowShelf shelf_;
};

}  // namespace korvane::program
