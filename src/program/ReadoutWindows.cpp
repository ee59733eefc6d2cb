#include "program/ReadoutWindows.h"

#include "live/readout/FrmBigText.h"

namespace korvane::program {

ReadoutWindows::ReadoutWindows(platform::Machine& machine, const core::LiveTable& live)
    : machine_(machine), live_(live), shelf_(machine.pump) {}

void ReadoutWindows::openBigText() {
    shelf_.show(std::make_unique<live::FrmBigText>(machine_, live_, bigTexts_));
}

void ReadoutWindows::openMeter() {
    if (frmMeter_ != nullptr) {
        frmMeter_->show();
        return;
    }
    auto window = std::make_unique<live::FrmMeter>(machine_);
    frmMeter_ = window.get();
    frmMeter_->Closed = [this] { frmMeter_ = nullptr; };
    shelf_.show(std::move(window));
}

void ReadoutWindows::unloadAll() {
    for (auto* const window : bigTexts_.all()) {
        static_cast<void>(window->unload());
    }
    shelf_.unloadAll();
}

}  // namespace korvane::program
