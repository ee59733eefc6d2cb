#include "program/LogViewer.h"

#include <memory>
#include <utility>

#include "platform/Machine.h"

namespace korvane::program {

LogViewer::LogViewer(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live,
                     logs::clsTXTdata*& reader)
    : frmSarn2_(frmSarn2), liveUpdate_(liveUpdate), live_(live), reader_(reader), shelf_(frmSarn2.machine().pump) {}

void LogViewer::open() {
    if (window_ != nullptr) {
        window_->show();
        return;
    }
    auto window = std::make_unique<trend::FrmTrend_txt>(frmSarn2_, liveUpdate_, live_);
    window_ = window.get();
    reader_ = &window_->reader();
    window_->Closed = [this] {
        window_ = nullptr;
        reader_ = nullptr;
    };
    shelf_.show(std::move(window));
}

void LogViewer::open(const std::filesystem::path& log) {
    open();
    if (window_ != nullptr) {
        window_->open(log);
    }
}

}  // namespace korvane::program
