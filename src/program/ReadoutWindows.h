// The big readouts and the window to try the dial, and how long each lives.
#pragma once

#include "controls/WindowShelf.h"
#include "core/tables/LiveTable.h"
#include "live/readout/BigTexts.h"
#include "platform/Machine.h"

namespace korvane::program {

// Each opening makes a window anew. Of frmBigText any number are open; frmMeter is one at a time.
class ReadoutWindows {
public:
    ReadoutWindows(platform::Machine& machine, const core::LiveTable& live);

    void openBigText();
    void openMeter();
    void unloadAll();

    [[nodiscard]] const live::BigTexts& bigTexts() const { return bigTexts_; }

private:
    platform::Machine& machine_;
    const core::LiveTable& live_;
    live::BigTexts bigTexts_;
    controls::WindowShelf shelf_;
};

}  // namespace korvane::program
