// Buttons and check boxes of a control, as most views make them.
#pragma once

#include <QCheckBox>
#include <QPushButton>

#include "controls/Controls.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Bound to the control, whose caption shows the mnemonic.
[[nodiscard]] QPushButton& makeButton(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent);
[[nodiscard]] QCheckBox& makeBox(controls::CheckBox& box, char mnemonic, Binder& binder, QWidget* parent);

}  // namespace korvane::views
