// A whole program with all its views, one of which a test looks at.
#pragma once

#include <string>

#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/Views.h"
#include "views/frame/ViewHost.h"

namespace korvane::views {

// The main window's view, until a test looks at another one.
struct ProgramViews : support::VirtualProgram {
    ProgramViews() { addViews(host); }

    void lookAt(const controls::Window& other) { seen_ = &other; }
    [[nodiscard]] WindowView& view() const { return *host.viewOf(*seen_); }
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(const std::string& name) const {
        return findIn<Widget>(view(), name);
    }

    // Runs the next frame of the clock, and what the toolkit has delayed.
    void frame() {
        host.clock().tick();
        settle();
    }

    ViewHost host{windows};

private:
    const controls::Window* seen_ = &window;
};

}  // namespace korvane::views
