// The help of one window: what it is for and which keys it has.
#pragma once

#include <QDialog>
#include <QString>

#include "views/frame/WindowGuide.h"

namespace korvane::views {

// Escape hides it. It belongs to its window, which shows it again.
class HelpWindow : public QDialog {
public:
    HelpWindow(const WindowGuide& guide, QWidget* parent);
};

// The text in the form that a text widget takes.
[[nodiscard]] QString helpText(const WindowGuide& guide);

}  // namespace korvane::views
