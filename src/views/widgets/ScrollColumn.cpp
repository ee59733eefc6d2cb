#include "views/widgets/ScrollColumn.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

#include "views/widgets/Child.h"

namespace korvane::views {

ScrollColumn::ScrollColumn(Width width, QWidget* parent)
    : QScrollArea(parent), width_(width), inside_(child<QWidget>(kNobody)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(width == Width::Needed ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Expanding);
    setWidget(&inside_);
}

QSize ScrollColumn::sizeHint() const {
    return width_ == Width::Needed ? QScrollArea::sizeHint() : inside_.sizeHint();
}

QSize ScrollColumn::minimumSizeHint() const {
    return {std::max(minimumWidth(), inside_.minimumSizeHint().width()), 0};
}

void ScrollColumn::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit();
}

void ScrollColumn::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    fit();
}

void ScrollColumn::hideEvent(QHideEvent* event) {
    QScrollArea::hideEvent(event);
    fit();
}

bool ScrollColumn::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &inside_ && event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QScrollArea::eventFilter(watched, event);
}

// Room for the bar only where there is one. The height of a page that is hidden says nothing.
void ScrollColumn::fit() {
    const QSize needed = inside_.minimumSizeHint();
    const bool known = width_ == Width::Needed || isVisible();
    const bool scrolls = known && height() < needed.height();
    const int wide = needed.width() + (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
    width_ == Width::Needed ? setFixedWidth(wide) : setMinimumWidth(wide);
}

}  // namespace korvane::views
