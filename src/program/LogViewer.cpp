#include "program/LogViewer.h"

#include "platform/Machine.h"

namespace korvane::program {

LogViewer::LogViewer(live::FrmSarn2& frmSarn2, live::LiveUpdate& liveUpdate, core::LiveTable& live,
                     logs::clsTXTdata*& reader)
    : frmSarn2_(frmSarn2), liveUpdate_(liveUpdate), live_(live), reader_(reader), shelf_(frmSarn2.machine().pump) {}

void LogViewer::open() {
    shelf_.one<trend::FrmTrend_txt>([this] { return make(); }).show();
}

std::unique_ptr<trend::FrmTrend_txt> LogViewer::make() {
    auto viewer = std::make_unique<trend::FrmTrend_txt>(frmSarn2_, liveUpdate_, live_);
    reader_ = &viewer->reader();
    if (rehearser_ != nullptr) {
        viewer->useRehearser(*rehearser_);
    }
    viewer->Unloaded = [this] { reader_ = nullptr; };
    return viewer;
}

void LogViewer::open(const std::filesystem::path& log) {
    open();
    if (auto* const viewer = window()) {
        viewer->open(log);
    }
}

}  // namespace korvane::program
