#include "controls/WindowShelf.h"

#include <algorithm>

namespace korvane::controls {

namespace {
constexpr platform::Micros kSweep = 100 * platform::kMicrosPerMilli;
}

WindowShelf::WindowShelf(platform::EventPump& pump) : pump_(pump), sweeper_(pump.makeAlarm([this] { sweep(); })) {}

WindowShelf::~WindowShelf() = default;

void WindowShelf::take(std::unique_ptr<Window> window) {
    window->Unloaded = [this, before = std::move(window->Unloaded)] {
        if (before) {
            before();
        }
        planSweep();
    };
    windows_.push_back(std::move(window));
}

void WindowShelf::planSweep() {
    sweeper_->callAt(pump_.now() + kSweep);
}

void WindowShelf::sweep() {
    std::erase_if(windows_, [](const auto& window) { return !window->isLoaded() && !window->isBusy(); });
    if (std::any_of(windows_.begin(), windows_.end(), [](const auto& window) { return !window->isLoaded(); })) {
        planSweep();
    }
}

void WindowShelf::unloadAll() {
    for (auto place = windows_.size(); place > 0; --place) {
        static_cast<void>(windows_.at(place - 1)->unload());
    }
}

}  // namespace korvane::controls
