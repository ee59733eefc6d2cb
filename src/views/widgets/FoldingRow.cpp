#include "views/widgets/FoldingRow.h"

#include <QEvent>

#include <algorithm>

#include "views/widgets/Child.h"

namespace korvane::views {

FoldingRow::FoldingRow(int spacing, QWidget* parent)
    : QWidget(parent),
      rows_(child<QBoxLayout>(static_cast<QWidget*>(this), QBoxLayout::LeftToRight)),
      first_(child<QHBoxLayout>(static_cast<QWidget*>(nullptr))),
      second_(child<QHBoxLayout>(static_cast<QWidget*>(nullptr))) {
    rows_.setContentsMargins(0, 0, 0, 0);
    rows_.setSpacing(spacing);
    rows_.addLayout(&first_, 1);
    rows_.addLayout(&second_);
    rows_.setAlignment(&second_, Qt::AlignRight);
    for (auto* group : {&first_, &second_}) {
        group->setSpacing(spacing);
    }
}

QSize FoldingRow::minimumSizeHint() const {
    return {std::max(first_.minimumSize().width(), second_.minimumSize().width()), QWidget::minimumSizeHint().height()};
}

// A widget of a group may be shown, hidden or get another size.
bool FoldingRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        fold();
    }
    return QWidget::event(event);
}

void FoldingRow::resizeEvent(QResizeEvent* event) {
    fold();
    QWidget::resizeEvent(event);
}

void FoldingRow::fold() {
    const int beside = first_.minimumSize().width() + rows_.spacing() + second_.minimumSize().width();
    rows_.setDirection(width() < beside ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

}  // namespace korvane::views
