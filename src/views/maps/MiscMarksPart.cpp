#include "views/maps/MiscMarksPart.h"

#include <QHelpEvent>
#include <QToolTip>

#include <utility>

#include "views/frame/ObjectPart.h"
#include "views/widgets/PlainTip.h"

namespace korvane::views {

std::vector<controls::Object*> miscBoxesOf(maps::MiscPane& pane) {
    std::vector<controls::Object*> boxes{&pane.miscMarks()};
    const auto add = [&boxes](auto& controls) {
        for (auto& control : controls) {
            boxes.push_back(&control);
        }
    };
    add(pane.txtMisc);
    add(pane.CheckMisc);
    add(pane.optINJMaxOpen);
    return boxes;
}

template <class Widget>
bool Marked<Widget>::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && !note_.isEmpty()) {
        const QString own = this->toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           plainTip(own.isEmpty() ? note_ : note_ + u'\n' + own), this);
        return true;
    }
    return Widget::event(event);
}

template <class Widget>
void Marked<Widget>::paintEvent(QPaintEvent* event) {
    Widget::paintEvent(event);
    if (!note_.isEmpty()) {
        QPainter painter(this);
        paintCorner(painter, this->rect(), BoxMark::Filled, this->palette().color(QPalette::Base));
    }
}

template <class Widget>
void bindNote(maps::MiscPane& pane, Binder& binder, Marked<Widget>& widget, std::function<std::string()> note) {
    ObjectPart::bind(binder, miscBoxesOf(pane),
                     [&widget, told = std::move(note)] { widget.setNote(QString::fromStdString(told())); });
}

template class Marked<QLineEdit>;
template class Marked<QCheckBox>;
template class Marked<QRadioButton>;
template void bindNote(maps::MiscPane&, Binder&, Marked<QLineEdit>&, std::function<std::string()>);
template void bindNote(maps::MiscPane&, Binder&, Marked<QCheckBox>&, std::function<std::string()>);
template void bindNote(maps::MiscPane&, Binder&, Marked<QRadioButton>&, std::function<std::string()>);

}  // namespace korvane::views
