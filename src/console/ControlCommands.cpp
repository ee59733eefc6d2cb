#include <algorithm>

#include "console/Console.h"
#include "console/ConsoleError.h"
#include "console/Keyboard.h"

// The commands that do what a user does to windows and controls.
namespace korvane::console {

namespace {

using platform::Control;

constexpr int kHighestKey = 255;
constexpr int kHighestShift = 7;
constexpr int kLargestWindow = 1'000'000;  // twips
constexpr int kHighestChoice = 1'000'000;

std::string pathOf(const Finder& finder, const Control& control) {
    return finder.nameOf(control.window()) + '.' + control.path();
}

[[noreturn]] void cannot(const std::string& path, const Control& control, std::string_view what) {
    throw ConsoleError(path + " is " + withArticle(control.kind()) + " and " + std::string(what));
}

void leftButton(Control& control, int shift) {
    if (control.canFocus()) {
        control.window().setFocus(&control);
    }
    control.mouseUp(1, shift, control.Width / 2.0, control.Height / 2.0);
}

}  // namespace

Console::Answer Console::click(Arguments& arguments) {
    auto& control = nextReachable(arguments);
    if (control.choices()) {
        cannot(pathOf(finder_, control), control, "is not clicked but chosen from");
    }
    if (!control.canClick()) {
        cannot(pathOf(finder_, control), control, "can't be clicked");
    }
    control.press();
    return {};
}

Console::Answer Console::choose(Arguments& arguments) {
    auto& control = nextReachable(arguments);
    const auto choices = control.choices();
    if (!choices) {
        cannot(pathOf(finder_, control), control, "offers nothing to choose");
    }
    const int choice = arguments.number(0, kHighestChoice);
    if (choice < choices->first || choice >= choices->first + choices->count) {
        throw ConsoleError(pathOf(finder_, control) + " has no row " + std::to_string(choice) +
                           (choices->count == 0 ? " (it is empty)"
                                                : " (" + std::to_string(choices->first) + " to " +
                                                      std::to_string(choices->first + choices->count - 1) + ")"));
    }
    control.choose(choice);
    return {};
}

Console::Answer Console::column(Arguments& arguments) {
    auto& control = nextReachable(arguments);
    if (control.columnCount() == 0) {
        cannot(pathOf(finder_, control), control, "has no columns");
    }
    const int column = arguments.number(0, kHighestChoice);
    if (column < 1 || column > control.columnCount()) {
        throw ConsoleError(pathOf(finder_, control) + " has no column " + std::to_string(column) + " (1 to " +
                           std::to_string(control.columnCount()) + ")");
    }
    control.clickColumn(column);
    return {};
}

Console::Answer Console::type(Arguments& arguments) {
    auto& control = nextReachable(arguments);
    auto* const box = dynamic_cast<platform::TextBox*>(&control);
    if (box == nullptr) {
        cannot(pathOf(finder_, control), control, "takes no text");
    }
    typeText(*box, arguments.text());
    return {};
}

Console::Answer Console::key(Arguments& arguments) {
    auto& control = focusable(parsePath(arguments.text()));
    const int code = arguments.number(1, kHighestKey);
    pressKey(control, code, arguments.numberOr(0, 0, kHighestShift));
    return {};
}

Console::Answer Console::keyup(Arguments& arguments) {
    auto& control = focusable(parsePath(arguments.text()));
    const int code = arguments.number(1, kHighestKey);
    control.keyUp(code, arguments.numberOr(0, 0, kHighestShift));
    return {};
}

// A button or lamp that a press means something to is clicked by the same mouse.
Console::Answer Console::mouse(Arguments& arguments) {
    auto& control = nextReachable(arguments);
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
    auto& control = focusable(path);
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
