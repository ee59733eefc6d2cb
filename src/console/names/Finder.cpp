#include "console/names/Finder.h"

#include <algorithm>
#include <utility>

#include "console/ConsoleError.h"

namespace korvane::console {

namespace {

using controls::Control;
using controls::Window;

struct Span {
    int first = 0;
    int last = 0;
    bool array = false;
    bool found = false;
};

// The indices of the controls named `name`.
Span spanOf(const Window& window, std::string_view name) {
    Span span;
    for (const Control* control : window.controls()) {
        if (control->name() != name) {
            continue;
        }
        const int index = control->index().value_or(0);
        span.first = span.found ? std::min(span.first, index) : index;
        span.last = span.found ? std::max(span.last, index) : index;
        span.array = control->index().has_value();
        span.found = true;
    }
    return span;
}

std::string rangeText(const Span& span) {
    return std::to_string(span.first) + " to " + std::to_string(span.last);
}

[[noreturn]] void wrongIndex(const Window& window, const Segment& segment, const Span& span) {
    const std::string plain = std::string(window.name()) + '.' + segment.name;
    if (!span.array) {
        throw ConsoleError(plain + " is no control array and takes no index");
    }
    if (segment.indices.size() != 1) {
        throw ConsoleError(plain + " is a control array and needs an index: " + rangeText(span));
    }
    throw ConsoleError(plain + '(' + std::to_string(segment.indices.front()) + ") does not exist: the index must be " +
                       rangeText(span));
}

bool bears(const Control& control, const Segment& segment) {
    if (control.name() != segment.name || control.index().has_value() != segment.indexed) {
        return false;
    }
    return !segment.indexed || (segment.indices.size() == 1 && *control.index() == segment.indices.front());
}

void requirePlain(const Segment& segment) {
    if (segment.indexed) {
        throw ConsoleError(shown(segment.name) + " takes no index");
    }
}

}  // namespace

bool Finder::knowsWindow(const Path& path) const {
    const auto& name = path.segments.front().name;
    const auto& loaded = windows_.loaded();
    return std::any_of(loaded.begin(), loaded.end(), [&](const Window* window) { return window->name() == name; });
}

Window& Finder::windowAt(const Segment& segment) const {
    requirePlain(segment);
    int left = segment.instance.value_or(1);
    for (Window* const window : windows_.loaded()) {
        if (window->name() == segment.name && --left == 0) {
            return *window;
        }
    }
    throw ConsoleError("no open window is named " + shown(written(std::span(&segment, 1))));
}

Window& Finder::window(const Path& path) const {
    if (path.segments.size() != 1) {
        throw ConsoleError(shown(path.text) + " is no window");
    }
    return windowAt(path.segments.front());
}

Control& Finder::control(const Path& path) const {
    Window& window = windowAt(path.segments.front());
    if (path.segments.size() != 2) {
        throw ConsoleError(shown(path.text) + " is no control");
    }
    Control* const control = findControl(window, path.segments[1]);
    if (control == nullptr) {
        throw ConsoleError(std::string(window.name()) + " has no control " + shown(path.segments[1].name));
    }
    return *control;
}

Target Finder::target(const Path& path) const {
    Window& window = windowAt(path.segments.front());
    const auto& segments = path.segments;
    if (segments.size() < 2) {
        throw ConsoleError(shown(path.text) + " is a window; name a property of it, such as " + shown(path.text) +
                           ".Caption");
    }
    Control* const control = findControl(window, segments[1]);
    if (control == nullptr) {
        if (segments.size() > 2 || (!segments[1].isPlain()) || window.findProperty(segments[1].name) == nullptr) {
            throw ConsoleError(shown(written(std::span(segments).first(1))) + " has no property or control " +
                               shown(segments[1].name));
        }
        return {&window, nullptr, written(std::span(segments).first(1)), segments[1]};
    }
    if (segments.size() != 3) {
        throw ConsoleError(shown(path.text) + (segments.size() < 3
                                                   ? " is " + withArticle(control->kind()) + "; name a property of it"
                                                   : " does not exist"));
    }
    return {control, control, written(std::span(segments).first(2)), segments[2]};
}

std::string Finder::nameOf(const Window& window) const {
    int place = 0;
    for (const Window* const other : windows_.loaded()) {
        place += other->name() == window.name() ? 1 : 0;
        if (other == &window) {
            break;
        }
    }
    return std::string(window.name()) + (place > 1 ? '#' + std::to_string(place) : "");
}

Control* findControl(const Window& window, const Segment& segment) {
    const auto& controls = window.controls();
    if (segment.instance) {
        return nullptr;
    }
    const auto found =
        std::find_if(controls.begin(), controls.end(), [&](const Control* each) { return bears(*each, segment); });
    if (found != controls.end()) {
        return *found;
    }
    if (const Span span = spanOf(window, segment.name); span.found) {
        wrongIndex(window, segment, span);
    }
    return nullptr;
}

Json controlNames(const Window& window) {
    Json::Array names;
    std::vector<std::string_view> arrays;
    for (const Control* const control : window.controls()) {
        if (!control->index()) {
            names.emplace_back(control->name());
        } else if (std::find(arrays.begin(), arrays.end(), control->name()) == arrays.end()) {
            arrays.push_back(control->name());
            const Span span = spanOf(window, control->name());
            names.emplace_back(std::string(control->name()) + '(' + std::to_string(span.first) + ".." +
                               std::to_string(span.last) + ')');
        }
    }
    return names;
}

std::string withArticle(std::string_view kind) {
    const bool vowel = !kind.empty() && std::string_view("aeiou").find(kind.front()) != std::string_view::npos;
    return (vowel ? "an " : "a ") + std::string(kind);
}

}  // namespace korvane::console
