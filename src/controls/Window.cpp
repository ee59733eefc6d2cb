#include "controls/Window.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "controls/Control.h"
#include "platform/DebugLog.h"
#include "platform/Machine.h"

namespace korvane::controls {

namespace {

Value nameValue(const Object& object) {
    return std::string(dynamic_cast<const Window&>(object).name());
}

Value activeControlValue(const Object& object) {
    const auto* control = dynamic_cast<const Window&>(object).activeControl();
    return control != nullptr ? Value(control->path()) : Value();
}

constexpr std::array kProperties{
    readOnlyProperty<&nameValue>("Name"),  property<&Window::Caption>("Caption"),
    property<&Window::Visible>("Visible"), property<&Window::Left>("Left"),
    property<&Window::Top>("Top"),         property<&Window::Width>("Width"),
    property<&Window::Height>("Height"),   property<&Window::BackColor>("BackColor"),
    property<&Window::Tag>("Tag"),         readOnlyProperty<&activeControlValue>("ActiveControl"),
};

}  // namespace

Window::Window(platform::Machine& machine, std::string_view name) : machine_(machine), name_(name) {}

Window::~Window() {
    if (loaded_) {
        machine_.windows.remove(*this);
    }
}

void Window::load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    wasShown_ = false;
    machine_.windows.add(*this);
    enter(name_, [this] { Form_Load(); });
    // The load event may have unloaded it again.
    if (loaded_) {
        machine_.windows.announce(*this);
    }
}

void Window::show() {
    load();
    if (!loaded_) {
        return;
    }
    Visible = true;
    changed(shownProperty());
    if (!std::exchange(wasShown_, true)) {
        enter(name_, [this] { Form_Shown(); });
    }
}

bool Window::unload() {
    if (!loaded_) {
        return true;
    }
    if (hidesOnClose_) {
        Visible = false;
        return false;
    }
    bool goes = true;
    enter(name_, [&] { goes = Form_Unload(); });
    if (goes && loaded_) {
        loaded_ = false;
        Visible = false;
        active_ = nullptr;
        machine_.windows.remove(*this);
        if (Unloaded) {
            Unloaded();
        }
    }
    return goes;
}

void Window::leave() {
    hidesOnClose_ = false;
    static_cast<void>(unload());
}

void Window::resize(int width, int height) {
    const bool outer = std::exchange(resizing_, true);
    Width = width;
    Height = height;
    enter(name_, [this] { Form_Resize(); });
    resizing_ = outer;
}

void Window::afterChange(const void* property) {
    if ((property == &Width || property == &Height) && loaded_ && !resizing_) {
        resize(Width, Height);
    }
}

void Window::setFocus(Control* control) {
    if (control == active_ ||
        (control != nullptr && !(control->canFocus() && control->inSight() && control->usable()))) {
        return;
    }
    Control* const left = std::exchange(active_, control);
    changed(focusProperty());
    if (left != nullptr) {
        enter(left->name(), [&] { left->LostFocus(); });
    }
    if (control != nullptr && active_ == control) {
        enter(control->name(), [&] { control->GotFocus(); });
    }
}

void Window::Form_KeyDown(int, int) {}

bool Window::offerKey(int keyCode, int shift) {
    bool takes = false;
    enter(name_, [&] {
        const auto& ofAll = machine_.windows.takesKey;
        takes = takesKey(keyCode, shift) || (ofAll && ofAll(keyCode, shift));
    });
    if (takes || takenKey_ == keyCode) {
        takenKey_ = takes ? keyCode : 0;
    }
    return takes;
}

bool Window::releaseTaken(int keyCode) {
    const bool taken = takenKey_ != 0 && takenKey_ == keyCode;
    takenKey_ = taken ? 0 : takenKey_;
    return taken;
}

void Window::logFailure(std::string_view what, const std::exception& error) {
    machine_.log.write(std::string(name_) + "." + std::string(what) + ": " + error.what());
}

std::vector<std::span<const PropertyInfo>> Window::propertyTables() const {
    return {kProperties};
}

void Window::add(Control& control) {
    controls_.push_back(&control);
}

void Window::arrange(std::span<const std::string_view> names) {
    using Placed = std::pair<std::ptrdiff_t, Control*>;
    std::vector<Placed> placed;
    for (auto* control : controls_) {
        placed.emplace_back(std::find(names.begin(), names.end(), control->name()) - names.begin(), control);
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const Placed& one, const Placed& other) { return one.first < other.first; });
    std::transform(placed.begin(), placed.end(), controls_.begin(), [](const Placed& each) { return each.second; });
}

void Window::remove(Control& control) {
    if (active_ == &control) {
        active_ = nullptr;
    }
    std::erase(controls_, &control);
}

void WindowList::add(Window& window) {
    loaded_.push_back(&window);
}

void WindowList::announce(Window& window) {
    if (listener_ != nullptr) {
        listener_->windowLoaded(window);
    }
}

void WindowList::remove(Window& window) {
    std::erase(loaded_, &window);
    if (listener_ != nullptr) {
        listener_->windowUnloaded(window);
    }
    if (unloaded) {
        unloaded();
    }
}

}  // namespace korvane::controls
