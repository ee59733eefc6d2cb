#include "app/StrictRun.h"

#include <utility>

#include "core/files/ChannelFile.h"

namespace korvane::app {

using platform::MessageIcon;

namespace {

std::string inOneParagraph(std::string_view text) {
    std::string line;
    for (const char each : text) {
        if (each != '\r') {
            line += each == '\n' ? ' ' : each;
        }
    }
    return line;
}

}  // namespace

bool isErrorBox(const platform::MessageBox& box) {
    return box.icon != MessageIcon::Information && box.text != core::kNoChannelFile;
}

StrictRun::StrictRun(platform::EventPump& pump, std::function<void()> quit,
                     std::function<void(std::string_view)> complain)
    : quit_(std::move(quit)),
      complain_(std::move(complain)),
      end_(pump.makeAlarm([this] { quit_(); }, platform::AlarmKind::Command)),
      pump_(pump) {}

void StrictRun::show(const platform::MessageBox& box) {
    if (isErrorBox(box) && fail("message box: " + inOneParagraph(box.text))) {
        end_->callAt(pump_.now());
    }
}

void StrictRun::hear(std::string_view reply) {
    constexpr std::string_view kError = "error ";
    ++replies_;
    if (!reply.starts_with(kError)) {
        return;
    }
    reply.remove_prefix(kError.size());
    reply.remove_suffix(reply.ends_with('\n') ? 1 : 0);
    if (fail("command " + std::to_string(replies_) + ": " + std::string(reply))) {
        quit_();
    }
}

bool StrictRun::fail(const std::string& reason) {
    if (std::exchange(failed_, true)) {
        return false;
    }
    complain_("--strict: " + reason);
    return true;
}

}  // namespace korvane::app
