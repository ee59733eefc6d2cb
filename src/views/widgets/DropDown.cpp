#include "views/widgets/DropDown.h"

#include <QWheelEvent>

namespace korvane::views {

DropDown::DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void DropDown::showPopup() {
    if (opening_) {
        opening_();
    }
    QComboBox::showPopup();
}

void DropDown::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

}  // namespace korvane::views
