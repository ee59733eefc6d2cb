#include "program/ReadoutWindows.h"

#include <memory>

#include "live/readout/FrmBigText.h"
#include "live/readout/FrmMeter.h"

namespace korvane::program {

ReadoutWindows::ReadoutWindows(platform::Machine& machine, const core::LiveTable& live)
    : machine_(machine), live_(live), shelf_(machine.pump) {}

void ReadoutWindows::openBigText() {
    shelf_.show(std::make_unique<live::FrmBigText>(machine_, live_, bigTexts_));
}

void ReadoutWindows::openMeter() {
    shelf_.one<live::FrmMeter>([this] { return std::make_unique<live::FrmMeter>(machine_); }).show();
}

void ReadoutWindows::unloadAll() {
    for (auto* const window : bigTexts_.all()) {
        static_cast<void>(window->unload());
    }
    shelf_.unloadAll();
}

}  // namespace korvane::program
