#include "program/DebugWindow.h"

#include <memory>
#include <utility>

namespace korvane::program {

DebugWindow::DebugWindow(platform::Machine& machine, live::FrmSarn2& main, live::TrendSink& trends,
                         logs::LogWriter& log, link::Windows& windows)
    : machine_(machine), main_(main), trends_(trends), log_(log), windows_(windows), shelf_(machine.pump) {}

void DebugWindow::open() {
    if (window_ != nullptr) {
        window_->show();
        return;
    }
    auto window = std::make_unique<live::FrmIGNDebug>(machine_, main_, trends_, log_);
    window_ = window.get();
    windows_.frmIGNDebug = window_;
    window_->Closed = [this] { windows_.frmIGNDebug = window_ = nullptr; };
    shelf_.show(std::move(window));
}

}  // namespace korvane::program
