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

QLabel& makeWords(controls::Label& label, Binder& binder, QWidget* parent, const QString& description) {
    auto& words = child<QLabel>(parent);
    words.setWordWrap(true);
    words.setMinimumWidth(1);
    words.setTextInteractionFlags(Qt::TextSelectableByMouse);
    binder.bind(label, words);
    words.setAccessibleDescription(description);
    return words;
}

}  // namespace korvane::views
