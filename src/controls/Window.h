// A window as a model: its properties, its controls, the focus, and the one function through which all events enter.
#pragma once

#include <exception>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Color.h"
#include "controls/Property.h"

namespace korvane::platform {
struct Machine;
}

namespace korvane::controls {

class Control;

class Window : public Object {
public:
    Window(platform::Machine& machine, std::string_view name);
    ~Window() override;

    Property<std::string> Caption{*this};
    Property<bool> Visible{*this};
    Property<int> Left{*this}, Top{*this}, Width{*this}, Height{*this};  // twips
    Property<Color> BackColor{*this, kButtonFace};
    Property<std::string> Tag{*this};

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] platform::Machine& machine() const { return machine_; }
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }

    // Loading puts the window among the loaded ones and runs its load event once. Showing it loads it first, and brings
    // it before the others if it is shown already.
    void load();
    void show();
    [[nodiscard]] const void* shownProperty() const { return &loaded_; }
    [[nodiscard]] bool isLoaded() const { return loaded_; }

    // The close box, or the program's own unload. Returns false if the window stays: its unload event may refuse, or it
    // is one that hides instead.
    bool unload();
    // Unloads also a window that hides on its close box: the program ends.
    void leave();
    // For the owner: the window has been unloaded. Handlers of it may still run.
    std::function<void()> Unloaded;

    // The user drags the window to a new size, in twips. An assigned Width or Height of a loaded window sets off the
    // resize event too; one inside that event sets off no other.
    void resize(int width, int height);

    // The control with the focus; null when none has it. Moving it raises LostFocus and GotFocus; a control that can't
    // take the focus, is disabled or is hidden does not get it.
    [[nodiscard]] Control* activeControl() const { return active_; }
    void setFocus(Control* control);

    // A key pressed anywhere in the window, before the control with the focus gets it.
    virtual void Form_KeyDown(int keyCode, int shift);
    // Asked before Form_KeyDown: true if the window takes the key for itself. Nobody else gets it or its release then.
    [[nodiscard]] bool offerKey(int keyCode, int shift);
    // The key is released; true if the window had taken it.
    [[nodiscard]] bool releaseTaken(int keyCode);

    // Runs an event's handler. What it throws is caught here, with a line in the debug log.
    template <class Handler>
    void enter(std::string_view what, Handler&& handler) {
        const Stay stay(*this);
        try {
            handler();
        } catch (const std::exception& error) {
            logFailure(what, error);
        }
    }
    // Marks the window as in use by code that was not called through enter().
    class Stay {
    public:
        explicit Stay(Window& window) : window_(window) { ++window_.depth_; }
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;
        ~Stay() { --window_.depth_; }

    private:
        Window& window_;
    };
    // True while a handler of this window runs, also inside its waits: it must not be destroyed.
    [[nodiscard]] bool isBusy() const { return depth_ > 0; }

    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
    [[nodiscard]] const void* focusProperty() const { return &active_; }

    // Puts the controls into the order of their names in the list; those that it leaves out follow.
    void arrange(std::span<const std::string_view> names);

    void add(Control& control);
    void remove(Control& control);

protected:
    virtual void Form_Load() {}
    // Called after the first showing since its load, for what takes time: the window is visible meanwhile.
    virtual void Form_Shown() {}
    // Called before the unload; false keeps the window open.
    virtual bool Form_Unload() { return true; }
    virtual void Form_Resize() {}
    [[nodiscard]] virtual bool takesKey(int keyCode, int shift) {
        return static_cast<void>(keyCode), static_cast<void>(shift), false;
    }
    void afterChange(const void* property) override;
    // For a window that is one for the whole run: its close box hides it, and no unload event comes.
    void hideOnClose() { hidesOnClose_ = true; }

private:
    void logFailure(std::string_view what, const std::exception& error);

    platform::Machine& machine_;
    std::string_view name_;
    std::vector<Control*> controls_;
    Control* active_ = nullptr;
    int depth_ = 0;
    int takenKey_ = 0;
    bool loaded_ = false;
    bool resizing_ = false;
    bool wasShown_ = false;  // since its load
    bool hidesOnClose_ = false;
};

// The loaded windows, in order of loading.
class WindowListener {
public:
    virtual ~WindowListener() = default;
    virtual void windowLoaded(Window& window) = 0;
    virtual void windowUnloaded(Window& window) = 0;
};

class WindowList {
public:
    [[nodiscard]] const std::vector<Window*>& loaded() const { return loaded_; }
    // At most one listener: the one that shows windows on a display.
    void setListener(WindowListener* listener) { listener_ = listener; }
    // Of the owner of the windows: true if it takes a key of any window that the window itself does not take.
    std::function<bool(int keyCode, int shift)> takesKey;
    // Of whoever keeps what is worked on: told when a window has gone.
    std::function<void()> unloaded;

    // A window is in the list before its load event; the listener is called after the event.
    void add(Window& window);
    void announce(Window& window);
    void remove(Window& window);

private:
    std::vector<Window*> loaded_;
    WindowListener* listener_ = nullptr;
};

}  // namespace korvane::controls
