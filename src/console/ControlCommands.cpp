// Continues Console: the commands that do what a user does: press, type, choose, take a picture.
#include <algorithm>

#include "console/Console.h"
#include "console/ConsoleError.h"
#include "console/Keyboard.h"

namespace korvane::console {

namespace {

using controls::Control;

constexpr int kHighestKey = 255;
constexpr int kHighestShift = 7;
constexpr int kLargestWindow = 120'000;  // twips, more than any display has: a larger picture exhausts the memory
constexpr int kHighestChoice = 1'000'000;

void requireNumber(const std::string& sentence, int number, int first, int count) {
    if (number < first || number >= first + count) {
        const auto range = std::to_string(first) + " to " + std::to_string(first + count - 1);
        throw ConsoleError(sentence + std::to_string(number) + (count == 0 ? " (there is none)" : " (" + range + ")"));
    }
}

void giveFocus(Control& control) {
    if (control.canFocus()) {
        control.window().setFocus(&control);
    }
}

void leftButton(Control& control, int shift) {
    giveFocus(control);
    control.mouseUp(1, shift, control.Width / 2.0, control.Height / 2.0);
}

}  // namespace

Console::Answer Console::click(Arguments& arguments) {
    auto& control = nextControl(arguments);
    if (control.choices()) {
        cannot(control, "is not clicked but chosen from");
    }
    if (!control.canClick()) {
        cannot(control, "can't be clicked");
    }
    requireReach(control);
    giveFocus(control);
    requireReach(control);
    control.press();
    return {};
}

Console::Answer Console::choose(Arguments& arguments) {
    auto& control = nextControl(arguments);
    const auto choices = control.choices();
    if (!choices) {
        cannot(control, "offers nothing to choose");
    }
    requireReach(control);
    const int choice = arguments.number(0, kHighestChoice);
    requireNumber(pathOf(control) + " has no row ", choice, choices->first, choices->count);
    control.choose(choice);
    return {};
}

Console::Answer Console::column(Arguments& arguments) {
    auto& control = nextControl(arguments);
    if (control.columnCount() == 0) {
        cannot(control, "has no columns");
    }
    requireReach(control);
    const int column = arguments.number(0, kHighestChoice);
    requireNumber(pathOf(control) + " has no column ", column, 1, control.columnCount());
    control.clickColumn(column);
    return {};
}

Console::Answer Console::type(Arguments& arguments) {
    auto& control = nextControl(arguments);
    auto* const box = dynamic_cast<controls::TextBox*>(&control);
    if (box == nullptr) {
        cannot(control, "takes no text");
    }
    requireReach(control);
    typeText(*box, arguments.text());
    return {};
}

Console::Answer Console::key(Arguments& arguments) {
    auto& control = nextControl(arguments);
    requireFocusable(control);
    const int code = arguments.number(1, kHighestKey);
    pressKey(control, code, arguments.numberOr(0, 0, kHighestShift));
    return {};
}

Console::Answer Console::keyup(Arguments& arguments) {
    auto& control = nextControl(arguments);
    requireFocusable(control);
    const int code = arguments.number(1, kHighestKey);
    control.keyUp(code, arguments.numberOr(0, 0, kHighestShift));
    return {};
}

// A control that a press has an effect on is also clicked by the mouse.
Console::Answer Console::mouse(Arguments& arguments) {
    auto& control = nextControl(arguments);
    requireReach(control);
    leftButton(control, arguments.numberOr(0, 0, kHighestShift));
    const auto& controls = control.window().controls();
    const bool stands = std::find(controls.begin(), controls.end(), &control) != controls.end();
    if (stands && !control.choices() && control.canClick() && control.inSight() && control.usable()) {
        control.press();
    }
    return {};
}

Console::Answer Console::focus(Arguments& arguments) {
    const Path path = parsePath(arguments.text());
    if (path.segments.size() == 1) {
        finder_.window(path).setFocus(nullptr);
        return {};
    }
    auto& control = finder_.control(path);
    requireFocusable(control);
    control.window().setFocus(&control);
    return {};
}

Console::Answer Console::close(Arguments& arguments) {
    static_cast<void>(nextWindow(arguments).unload());
    return {};
}

Console::Answer Console::resize(Arguments& arguments) {
    auto& window = nextWindow(arguments);
    const int width = arguments.number(1, kLargestWindow);
    window.resize(width, arguments.number(1, kLargestWindow));
    return {};
}

Console::Answer Console::windows(Arguments&) {
    Json::Array out;
    for (const auto* window : context_.machine.windows.loaded()) {
        out.emplace_back(Json::Object{
            {"name", finder_.nameOf(*window)}, {"caption", window->Caption.get()}, {"visible", window->Visible.get()}});
    }
    return out;
}

Console::Answer Console::controls(Arguments& arguments) {
    return controlNames(nextWindow(arguments));
}

}  // namespace korvane::console
