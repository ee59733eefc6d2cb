// The controls of a window, as plain state with names and events. Views show them; scripts and tests drive them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "controls/Color.h"
#include "controls/Property.h"
#include "controls/PropertyTable.h"
#include "controls/Window.h"

namespace korvane::controls {

// The keys that the program's handlers name.
enum KeyCode : int {
    kKeyBackspace = 8,
    kKeyTab = 9,
    kKeyReturn = 13,
    kKeyShift = 16,
    kKeySpace = 32,
    kKeyLeft = 37,
    kKeyUp = 38,
    kKeyRight = 39,
    kKeyDown = 40,
    kKeyDelete = 127,
    kKeyPlus = 187,
    kKeyComma = 188,
    kKeyMinus = 189,
    kKeyPeriod = 190,
};

// The key code of the key that types `character`: letters share one code for both cases, and a character whose key has
// other codes on other keyboards has 0, so that none is mistaken for an arrow.
[[nodiscard]] int keyCodeOf(char character);

// Bits of a Shift argument.
inline constexpr int kShiftMask = 1;
inline constexpr int kControlMask = 2;
inline constexpr int kAltMask = 4;

// An event of a control: at most one handler, set by the window that owns the control.
template <class... Arguments>
class Event {
public:
    template <class Handler>
    void operator=(Handler handler) {  // NOLINT(misc-unconventional-assign-operator): sets the handler
        handler_ = std::move(handler);
    }
    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(handler_); }
    void operator()(Arguments... arguments) const {
        if (handler_) {
            handler_(arguments...);
        }
    }

private:
    std::function<void(Arguments...)> handler_;
};

// Base of all controls. Sizes are in twips.
class Control : public Object {
public:
    // `index` is the place in a control array, absent for a single control. `name` must outlive the control.
    Control(Window& window, std::string_view name, std::optional<int> index = {});
    ~Control() override;

    Property<bool> Enabled{*this, true};
    Property<bool> Visible{*this, true};
    Property<int> Left{*this}, Top{*this}, Width{*this}, Height{*this};
    Property<Color> BackColor{*this, kButtonFace};
    Property<Color> ForeColor{*this, kButtonText};
    Property<std::string> Tag{*this};
    Property<std::string> ToolTipText{*this};
    Property<int> FontSize{*this, 8};  // points
    Property<bool> FontBold{*this};

    Event<> Click, GotFocus, LostFocus;
    Event<int, int> KeyDown, KeyUp;           // key code, Shift
    Event<int&> KeyPress;                     // character code; the handler may change it, 0 drops the key
    Event<int, int, double, double> MouseUp;  // button (1 left), Shift, x, y in twips

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] std::optional<int> index() const { return index_; }
    [[nodiscard]] std::string path() const;  // "txtFuel(17)"
    [[nodiscard]] Window& window() const { return window_; }

    // What people call the control: the name that stands beside it, or over its column with the column's unit. Empty
    // for one that nobody has to name.
    void setLabel(std::string label) { label_ = std::move(label); }
    [[nodiscard]] const std::string& label() const { return label_; }

    // The frame or page that contains the control, null for the window itself.
    void setContainer(Control* container) { container_ = container; }
    [[nodiscard]] Control* container() const { return container_; }
    void place(int left, int top, int width, int height);

    // Whether a user could reach it: it and all its containers are visible, in view and enabled.
    [[nodiscard]] bool inSight() const;
    [[nodiscard]] bool usable() const;

    // "label", and the properties that matter most of it ("Caption"), for messages.
    [[nodiscard]] virtual std::string_view kind() const = 0;
    [[nodiscard]] virtual std::string_view mainProperty() const { return {}; }
    [[nodiscard]] virtual bool canFocus() const { return false; }
    // Whether pressing it has an effect.
    [[nodiscard]] virtual bool canClick() const { return static_cast<bool>(Click); }

    // The rows or tabs that a user picks from: the number of the first one and how many there are. Nothing for a
    // control that offers no choice.
    struct Choices {
        int first = 0;
        int count = 0;
    };
    [[nodiscard]] virtual std::optional<Choices> choices() const { return {}; }
    // How many column headers can be clicked; they count from 1.
    [[nodiscard]] virtual int columnCount() const { return 0; }
    // The value of a property that takes indices, such as List(2). Nothing if there is no such property; RuntimeError 9
    // for an index out of range.
    [[nodiscard]] virtual std::optional<Value> indexedProperty(std::string_view property,
                                                               std::span<const int> indices) const;

    // Picks one of choices(), or clicks the header of a column, as a user does.
    virtual void choose(int choice) { static_cast<void>(choice); }
    virtual void clickColumn(int column) { static_cast<void>(column); }

    // What a user does. Each runs through Window::enter(), which catches failures.
    virtual void press();  // a click
    // False if the window has taken the key for itself.
    bool keyDown(int keyCode, int shift);
    void keyUp(int keyCode, int shift);
    // A key that makes a character. Returns the character after the handler had it; 0 when it was dropped.
    int keyPress(int character);
    void mouseUp(int button, int shift, double x, double y);

    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    // Runs the event's handler through Window::enter().
    template <class... Arguments>
    void raise(const Event<Arguments...>& event, std::type_identity_t<Arguments>... arguments) const {
        if (event) {
            window_.enter(name_, [&] { event(arguments...); });
        }
    }

private:
    Window& window_;
    std::string_view name_;
    std::optional<int> index_;
    std::string label_;
    Control* container_ = nullptr;
};

// Shorthand for a control's list of property tables: the base's and its own.
template <class Base>
std::vector<std::span<const PropertyInfo>> withTable(const Base& control, std::span<const PropertyInfo> own) {
    auto tables = control.Base::propertyTables();
    tables.push_back(own);
    return tables;
}

}  // namespace korvane::controls
