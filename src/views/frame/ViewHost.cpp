#include "views/frame/ViewHost.h"

#include <QGuiApplication>

#include <algorithm>
#include <charconv>

#include "platform/Machine.h"
#include "views/frame/LinkMark.h"
#include "views/widgets/Child.h"
#include "views/widgets/Icons.h"

namespace korvane::views {

ViewHost::ViewHost(controls::WindowList& windows) : windows_(windows) {
    QGuiApplication::setWindowIcon(programIcon());
    windows_.setListener(this);
}

// Views that wait to be deleted are deleted here: no event loop may run again.
ViewHost::~ViewHost() {
    windows_.setListener(nullptr);
    for (const auto& view : leaving_) {
        const std::unique_ptr<WindowView> gone(view.data());
    }
}

void ViewHost::setLink(link::LinkState& link, std::function<void()> closePort) {
    link_ = &link;
    closePort_ = std::move(closePort);
}

void ViewHost::add(std::string_view windowName, Factory factory) {
    factories_.insert_or_assign(std::string(windowName), std::move(factory));
    for (auto* window : windows_.loaded()) {
        if (window->name() == windowName && viewOf(*window) == nullptr) {
            windowLoaded(*window);
        }
    }
}

WindowView* ViewHost::viewOf(const controls::Window& window) const {
    const auto found = views_.find(&window);
    return found != views_.end() ? found->second.get() : nullptr;
}

void ViewHost::windowLoaded(controls::Window& window) {
    const auto factory = factories_.find(window.name());
    if (factory != factories_.end()) {
        auto& view = views_[&window];
        view = factory->second(window, clock_);
        view->setDesk(desk_);
        if (link_ != nullptr) {
            child<LinkMark>(view.get(), *link_, closePort_, window.machine().pump);
        }
        view->open();
    }
}

void ViewHost::windowUnloaded(controls::Window& window) {
    const auto found = views_.find(&window);
    if (found != views_.end()) {
        std::erase_if(leaving_, [](const auto& view) { return view.isNull(); });
        leaving_.emplace_back(found->second.get());
        found->second.release()->leave();
        views_.erase(found);
    }
}

std::string ViewHost::screenshot(const controls::Window& window, const std::filesystem::path& file) const {
    WindowView* const view = viewOf(window);
    if (view == nullptr) {
        return std::string(window.name()) + " has no picture";
    }
    if (!view->picture().save(QString::fromStdString(file.string()), "PNG")) {
        return file.string() + " can't be written";
    }
    return {};
}

std::string ViewHost::screenshot(std::string_view windowName, const std::filesystem::path& file) const {
    const auto* const window = find(windowName);
    return window != nullptr ? screenshot(*window, file) : "no window " + std::string(windowName) + " is loaded";
}

const controls::Window* ViewHost::find(std::string_view windowName) const {
    const auto sign = windowName.find('#');
    int wanted = 1;
    if (sign != std::string_view::npos) {
        const auto number = windowName.substr(sign + 1);
        std::from_chars(number.data(), number.data() + number.size(), wanted);
    }
    for (const auto* window : windows_.loaded()) {
        if (window->name() == windowName.substr(0, sign) && --wanted == 0) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace korvane::views
