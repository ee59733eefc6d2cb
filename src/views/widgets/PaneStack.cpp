#include "views/widgets/PaneStack.h"

#include <QEvent>
#include <QStackedLayout>

#include <algorithm>

#include "views/widgets/Child.h"

namespace korvane::views {

PaneStack::PaneStack(QWidget* parent) : QWidget(parent), pages_(child<QStackedLayout>(this)) {
    pages_.setContentsMargins(0, 0, 0, 0);
}

QWidget& PaneStack::addPage() {
    auto& page = child<QWidget>(this);
    pages_.addWidget(&page);
    return page;
}

void PaneStack::watch(QWidget& pane) {
    panes_.push_back(&pane);
    pane.installEventFilter(this);
    showFirst();
}

bool PaneStack::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        showFirst();
    }
    return QWidget::eventFilter(watched, event);
}

void PaneStack::showFirst() {
    const auto first = std::find_if(panes_.begin(), panes_.end(), [](const auto* pane) { return !pane->isHidden(); });
    if (first != panes_.end()) {
        pages_.setCurrentIndex(static_cast<int>(first - panes_.begin()));
    }
}

}  // namespace korvane::views
