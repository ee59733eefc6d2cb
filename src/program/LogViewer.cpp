#include "program/LogViewer.h"

#include <memory>
#include <utility>

#include "platform/Machine.h"

namespace korvane::program {

LogViewer::LogViewer(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live)
    : frmSarn2_(frmSarn2), liveUpdate_(liveUpdate), live_(live), shelf_(frmSarn2.machine().pump) {}

void LogViewer::open() {
    if (window_ != nullptr) {
        window_->show();
        return;
    }
    auto window = std::make_unique<trend::FrmTrend_txt>(frmSarn2_, liveUpdate_, live_);
    window_ = window.get();
    window_->Closed = [this] { window_ = nullptr; };
    shelf_.show(std::move(window));
}

void LogViewer::open(const std::filesystem::path& log) {
    open();
    if (window_ != nullptr) {
        window_->open(log);
    }
}

}  // namespace korvane::program
