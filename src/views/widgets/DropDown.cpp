#include "views/widgets/DropDown.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace korvane::views {

namespace {

bool picksInClosedList(const QKeyEvent& event) {
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return false;
    }
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
            return true;
        default:
            return !event.text().isEmpty() && event.text().at(0).isPrint() && event.key() != Qt::Key_Space;
    }
}

}  // namespace

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

void DropDown::keyPressEvent(QKeyEvent* event) {
    if (picksInList_ && picksInClosedList(*event)) {
        showPopup();
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void DropDown::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && !picksInList_) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

}  // namespace korvane::views
