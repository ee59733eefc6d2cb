// Buttons, check boxes and words of a control, as most views make them.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "controls/Controls.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Bound to the control, whose caption shows the mnemonic.
[[nodiscard]] QPushButton& makeButton(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent);
[[nodiscard]] QCheckBox& makeBox(controls::CheckBox& box, char mnemonic, Binder& binder, QWidget* parent);
// Words that take as many lines as they need, and can be copied.
[[nodiscard]] QLabel& makeWords(controls::Label& label, Binder& binder, QWidget* parent,
                                const QString& description = {});

}  // namespace korvane::views
