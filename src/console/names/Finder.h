// From names to windows, controls and properties that exist now.
#pragma once

#include <string>
#include <string_view>

#include "console/names/Path.h"
#include "console/text/Json.h"
#include "controls/Control.h"
#include "controls/Window.h"

namespace korvane::console {

// A property of a window or of a control. Refers to them: not to be kept across events.
struct Target {
    controls::Object* object;
    controls::Control* control;  // null for a window's property
    std::string owner;           // "frmMaps.txtFuel(17)"
    Segment property;
};

// Each raises ConsoleError with a sentence that names what does not exist.
class Finder {
public:
    explicit Finder(const controls::WindowList& windows) : windows_(windows) {}

    // Whether a loaded window has the name of the path's first segment.
    [[nodiscard]] bool knowsWindow(const Path& path) const;
    [[nodiscard]] controls::Window& window(const Path& path) const;
    [[nodiscard]] controls::Control& control(const Path& path) const;
    [[nodiscard]] Target target(const Path& path) const;

    // The name by which commands reach a loaded window: "frmBigText#2".
    [[nodiscard]] std::string nameOf(const controls::Window& window) const;

private:
    [[nodiscard]] controls::Window& windowAt(const Segment& segment) const;

    const controls::WindowList& windows_;
};

// The control that `segment` names in `window`, or null if the window has none of that name. ConsoleError when the name
// is right and the index is not.
[[nodiscard]] controls::Control* findControl(const controls::Window& window, const Segment& segment);

// The names of the controls in the order of their making, arrays once with their index range.
[[nodiscard]] Json controlNames(const controls::Window& window);

// "a label", "an option button".
[[nodiscard]] std::string withArticle(std::string_view kind);

// Raises ConsoleError if there is no such property.
[[nodiscard]] Json readProperty(const Target& target);
void assignProperty(const Target& target, const Json& value);

}  // namespace korvane::console
