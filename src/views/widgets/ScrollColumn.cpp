#include "views/widgets/ScrollColumn.h"

#include <QEvent>
#include <QScrollBar>

#include "views/widgets/Child.h"

namespace korvane::views {

ScrollColumn::ScrollColumn(QWidget* parent) : QScrollArea(parent), inside_(child<QWidget>(kNobody)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setWidget(&inside_);
}

void ScrollColumn::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit();
}

bool ScrollColumn::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &inside_ && event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QScrollArea::eventFilter(watched, event);
}

// Room for the bar only where there is one.
void ScrollColumn::fit() {
    const QSize needed = inside_.minimumSizeHint();
    const bool scrolls = height() < needed.height();
    setFixedWidth(needed.width() + (scrolls ? verticalScrollBar()->sizeHint().width() : 0));
}

}  // namespace korvane::views
