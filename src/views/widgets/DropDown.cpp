#include "views/widgets/DropDown.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>

#include "views/widgets/PlainTip.h"

namespace korvane::views {

namespace {

constexpr int kFieldMargins = 2;  // of the style, on both sides of the text

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

QString DropDown::shownText(const QStyleOptionComboBox& option) const {
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(currentText(), Qt::ElideRight, field.width() - kFieldMargins);
}

bool DropDown::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QComboBox::event(event);
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (shownText(option) != currentText()) {
        const QString tip = toolTip().isEmpty() ? currentText() : currentText() + u'\n' + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainTip(tip), this);
        return true;
    }
    return QComboBox::event(event);
}

void DropDown::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = shownText(option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
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
