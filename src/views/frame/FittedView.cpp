#include "views/frame/FittedView.h"

#include <QFontInfo>
#include <QMetaObject>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "views/frame/Desk.h"
#include "views/widgets/Child.h"

namespace korvane::views {

namespace {
// The share of a larger window's extra size that makes texts larger; the rest makes the parts larger.
constexpr double kTextShare = 0.6;
constexpr QSize kSmallest{480, 320};
}  // namespace

FittedView::FittedView(controls::Window& window, FrameClock& clock, QSizeF usual, double smallest, double narrow)
    : WindowView(window, clock),
      usual_(usual),
      smallest_(smallest),
      narrow_(narrow),
      content_(child<QWidget>(kNobody)) {
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

int FittedView::heightBelow() const {
    layout()->activate();
    return height() - layout()->itemAt(0)->geometry().height();
}

void FittedView::fitTexts() {
    const double size = QFontInfo(font()).pixelSize();
    const int pixels = static_cast<int>(std::lround(size * textScale(size)));
    if (pixels != QFontInfo(content_.font()).pixelSize()) {
        QFont sized = font();
        sized.setPixelSize(pixels);
        content_.setFont(sized);
    }
}

// Where there is more room than usual both measures count, where there is less the width.
double FittedView::textScale(double size) const {
    const double wide = width() / (size * usual_.width());
    const double room = std::min(wide, height() / (size * usual_.height()));
    return room > 1 ? 1 + (room - 1) * kTextShare : std::clamp(wide / narrow_, smallest_, 1.0);
}

void FittedView::resizeEvent(QResizeEvent* event) {
    fitTexts();
    WindowView::resizeEvent(event);
}

void FittedView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        fitTexts();
        // Once all parts have the new font.
        QMetaObject::invokeMethod(
            this, [this] { fitWindow(); }, Qt::QueuedConnection);
    }
    WindowView::changeEvent(event);
}

QSize FittedView::wantedSize() const {
    return desk() != nullptr ? size().expandedTo(withScrollBar(content_.minimumSizeHint())) : size();
}

QSize FittedView::withScrollBar(QSize contentSize) const {
    const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int room = screen()->availableGeometry().height() - title - heightBelow();
    const bool isScrolled = desk() != nullptr && contentSize.height() > room;
    return contentSize + QSize(isScrolled ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0, 0);
}

void FittedView::fitWindow() {
    if (desk() != nullptr && isVisible()) {
        desk()->fit(*this, wantedSize());
    }
}

}  // namespace korvane::views
