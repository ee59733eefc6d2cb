#include "views/frame/BoundWidgets.h"

#include "views/widgets/Child.h"

namespace korvane::views {

QPushButton& makeButton(controls::CommandButton& button, char mnemonic, Binder& binder, QWidget* parent) {
    auto& push = child<QPushButton>(parent);
    binder.bind(button, push, mnemonic);
    return push;
}

QCheckBox& makeBox(controls::CheckBox& box, char mnemonic, Binder& binder, QWidget* parent) {
    auto& check = child<QCheckBox>(parent);
    binder.bind(box, check, mnemonic);
    return check;
}

}  // namespace korvane::views
