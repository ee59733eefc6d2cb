// The colours of the views: the program's own, the system's, and what is derived from these.
#pragma once

#include <QColor>
#include <QPalette>

#include "controls/Color.h"

class QApplication;
class QWidget;

namespace korvane::views {

// A colour of the program as the screen shows it; a system colour is looked up in `palette`.
[[nodiscard]] QColor colorOf(controls::Color color, const QPalette& palette);

// `share` of `other` (0 to 1) in `color`.
[[nodiscard]] QColor mixed(const QColor& color, const QColor& other, double share);

// How well one can be read on the other: from 1, not at all, to 21, black on white.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

// `wanted`, or black or white where its contrast with the ground is below `least`.
[[nodiscard]] QColor visibleOn(const QColor& ground, const QColor& wanted, double least);

// Makes this the only colour that the widget does not take from its surroundings; an invalid one leaves it none.
void setOwnColor(QWidget& widget, QPalette::ColorRole role, const QColor& color);

// Derived from the window's colour, so that a window that changes its colour changes it everywhere.
namespace shades {
// Whether white stands out better than black on the window's ground.
[[nodiscard]] bool isDark(const QPalette& palette);
[[nodiscard]] QColor surface(const QPalette& palette);  // cards
[[nodiscard]] QColor tile(const QPalette& palette);     // areas inside a card
[[nodiscard]] QColor border(const QPalette& palette);   // around both
[[nodiscard]] QColor edge(const QPalette& palette);   // of what must be found: contrast 3 with all grounds of a window
[[nodiscard]] QColor muted(const QPalette& palette);  // names beside values
// The same for a widget's text; a text with a colour set by the program keeps it.
[[nodiscard]] QColor names(const QWidget& widget);
[[nodiscard]] QColor face(const QPalette& palette);  // of a dial; a window that changes its colour leaves it alone
}  // namespace shades

// Colours that mean something by themselves, the same in light and dark.
namespace hues {
inline constexpr QColor kNeedle{214, 48, 38};
inline constexpr QColor kPeak{240, 160, 20};
inline constexpr QColor kRedZone{205, 40, 35};
inline constexpr QColor kGreenLamp{40, 190, 75};
inline constexpr QColor kRedLamp{225, 45, 40};
}  // namespace hues

class Palette {
public:
    // What the program paints with when dark or light is asked for; by itself it follows the system.
    [[nodiscard]] static QPalette dark();
    [[nodiscard]] static QPalette light();
    static void setDark(QApplication& application);
    static void setLight(QApplication& application);
};

}  // namespace korvane::views
