// Gives every loaded window its view.
#pragma once

#include <QPointer>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Window.h"
#include "link/LinkState.h"
#include "views/frame/FrameClock.h"
#include "views/frame/WindowView.h"

namespace korvane::views {

// Listens to the list of loaded windows for as long as it lives. A view is built when its window is loaded and goes
// when the window is unloaded; a window whose name no factory knows has none.
class ViewHost : private controls::WindowListener {
public:
    using Factory = std::function<std::unique_ptr<WindowView>(controls::Window& window, FrameClock& clock)>;

    explicit ViewHost(controls::WindowList& windows);
    ViewHost(const ViewHost&) = delete;
    ViewHost& operator=(const ViewHost&) = delete;
    ~ViewHost() override;

    // Where windows that are loaded from now on appear; it must exist as long as they do.
    void setDesk(const Desk* desk) { desk_ = desk; }
    // Every view that is made from now on shows the state of the line; `closePort` closes the port as a user does.
    void setLink(link::LinkState& link, std::function<void()> closePort);

    // How windows of this name look. Those loaded already get their view now.
    void add(std::string_view windowName, Factory factory);
    template <class View, class Model>
    void add(std::string_view windowName) {
        add(windowName, [](controls::Window& window, FrameClock& clock) -> std::unique_ptr<WindowView> {
            return std::make_unique<View>(dynamic_cast<Model&>(window), clock);
        });
    }

    // Null for a window without one.
    [[nodiscard]] WindowView* viewOf(const controls::Window& window) const;

    // Writes the window's picture to `file` (PNG). What went wrong, as a sentence; empty when it is done.
    [[nodiscard]] std::string screenshot(const controls::Window& window, const std::filesystem::path& file) const;
    // `windowName` is a loaded window's; with "#2" behind it the second of that name, in order of loading.
    [[nodiscard]] std::string screenshot(std::string_view windowName, const std::filesystem::path& file) const;

    [[nodiscard]] FrameClock& clock() { return clock_; }

private:
    void windowLoaded(controls::Window& window) override;
    void windowUnloaded(controls::Window& window) override;
    [[nodiscard]] const controls::Window* find(std::string_view windowName) const;

    controls::WindowList& windows_;
    FrameClock clock_;
    const Desk* desk_ = nullptr;
    link::LinkState* link_ = nullptr;
    std::function<void()> closePort_;
    std::map<std::string, Factory, std::less<>> factories_;
    std::map<const controls::Window*, std::unique_ptr<WindowView>> views_;
    std::vector<QPointer<WindowView>> leaving_;  // null once they have gone
};

}  // namespace korvane::views
