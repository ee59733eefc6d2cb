#include "views/frame/FittedView.h"

#include <QFontInfo>
#include <QResizeEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {
// The share of a larger window's extra size that makes texts larger; the rest makes the parts larger.
constexpr double kTextShare = 0.6;
constexpr QSize kSmallest{480, 320};
}  // namespace

FittedView::FittedView(controls::Window& window, FrameClock& clock, QSizeF usual)
    : WindowView(window, clock), usual_(usual), content_(child<QWidget>(kNobody)) {
    auto& scroll = child<QScrollArea>(this);
    scroll.setFrameShape(QFrame::NoFrame);
    scroll.setWidgetResizable(true);
    scroll.setFocusPolicy(Qt::NoFocus);
    scroll.setWidget(&content_);
    auto& whole = child<QVBoxLayout>(this);
    whole.setContentsMargins(0, 0, 0, 0);
    whole.setSpacing(0);
    whole.addWidget(&scroll);
    setMinimumSize(kSmallest);
}

int FittedView::heightBelow() {
    layout()->activate();
    return height() - layout()->itemAt(0)->geometry().height();
}

void FittedView::fitTexts() {
    const double size = QFontInfo(font()).pixelSize();
    const double room = std::min(width() / (size * usual_.width()), height() / (size * usual_.height()));
    const int pixels = static_cast<int>(std::lround(size * (1 + std::max(room - 1, 0.0) * kTextShare)));
    if (pixels != QFontInfo(content_.font()).pixelSize()) {
        QFont sized = font();
        sized.setPixelSize(pixels);
        content_.setFont(sized);
    }
}

void FittedView::resizeEvent(QResizeEvent* event) {
    fitTexts();
    WindowView::resizeEvent(event);
}

void FittedView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        fitTexts();
    }
    WindowView::changeEvent(event);
}

}  // namespace korvane::views
