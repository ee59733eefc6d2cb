// Owner of windows that are made anew for each opening.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "controls/Window.h"
#include "platform/EventPump.h"

namespace korvane::controls {

// Any number of them may be open, several of one kind as well. A window that has been unloaded is kept until none
// of its handlers runs, so that code behind a wait still finds it.
class WindowShelf {
public:
    explicit WindowShelf(platform::EventPump& pump);
    WindowShelf(const WindowShelf&) = delete;
    WindowShelf& operator=(const WindowShelf&) = delete;
    ~WindowShelf();

    // Takes the window and shows it. An Unloaded that it has already is still called. The reference is valid until the
    // window is deleted.
    template <class Kind>
    Kind& show(std::unique_ptr<Kind> window) {
        auto& shown = *window;
        take(std::move(window));
        shown.show();
        return shown;
    }
    // The newest open window of this kind, or else the one that `make` makes. The caller shows it.
    template <class Kind, class Make>
    [[nodiscard]] Kind& one(Make make) {
        if (auto* const window = open<Kind>()) {
            return *window;
        }
        std::unique_ptr<Kind> window = make();
        auto& made = *window;
        take(std::move(window));
        return made;
    }
    // The newest open window of this kind, null if there is none.
    template <class Kind>
    [[nodiscard]] Kind* open() const {
        for (auto place = windows_.rbegin(); place != windows_.rend(); ++place) {
            auto* const window = dynamic_cast<Kind*>(place->get());
            if (window != nullptr && window->isLoaded()) {
                return window;
            }
        }
        return nullptr;
    }
    // Unloads all windows, the newest first. One that refuses stays open.
    void unloadAll();

private:
    void take(std::unique_ptr<Window> window);
    void planSweep();
    void sweep();

    platform::EventPump& pump_;
    std::vector<std::unique_ptr<Window>> windows_;  // the newest last
    std::unique_ptr<platform::Alarm> sweeper_;
};

}  // namespace korvane::controls
