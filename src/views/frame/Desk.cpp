#include "views/frame/Desk.h"

#include <QApplication>
#include <QMargins>
#include <QScreen>
#include <QStyle>

#include <string>
#include <vector>

#include "views/frame/WindowView.h"

namespace korvane::views {

namespace {

using controls::Area;

Area areaOf(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QRect rectOf(const Area& area) {
    return {area.left, area.top, area.width, area.height};
}

std::vector<Area> screens(QRect (QScreen::*part)() const) {
    std::vector<Area> areas;
    for (const auto* screen : QGuiApplication::screens()) {
        areas.push_back(areaOf((screen->*part)()));
    }
    return areas;
}

std::string signature() {
    return controls::signatureOf(screens(&QScreen::geometry));
}

std::vector<const WindowView*> openViews(const WindowView& except) {
    std::vector<const WindowView*> views;
    for (const auto* widget : QApplication::topLevelWidgets()) {
        const auto* const view = dynamic_cast<const WindowView*>(widget);
        if (view != nullptr && view != &except && view->isVisible() && !view->isMinimized()) {
            views.push_back(view);
        }
    }
    return views;
}

// The one that the user works in, also if a dialog of it has the focus.
const WindowView* activeView() {
    const QWidget* widget = QApplication::activeWindow();
    while (widget != nullptr && dynamic_cast<const WindowView*>(widget) == nullptr) {
        widget = widget->parentWidget();
    }
    return dynamic_cast<const WindowView*>(widget);
}

QMargins frameOf(const QWidget& window) {
    const QRect outer = window.frameGeometry();
    const QRect inner = window.geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

// A window that has not been shown has no frame yet: that of another one is the same.
QMargins expectedFrame(const std::vector<const WindowView*>& others) {
    return others.empty() ? QMargins(0, QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0)
                          : frameOf(*others.front());
}

// The display may tell the frame of a window only some time after it is on the screen.
QMargins knownFrame(const WindowView& view) {
    const QMargins frame = frameOf(view);
    return frame.isNull() ? expectedFrame(openViews(view)) : frame;
}

controls::Opening openingOf(QSize wanted, const QMargins& frame, const std::vector<const WindowView*>& others) {
    const QSize outer = wanted.grownBy(frame);
    controls::Opening opening{outer.width(), outer.height(), {}, {}, screens(&QScreen::availableGeometry), {}};
    for (const auto* other : others) {
        opening.others.push_back(areaOf(other->frameGeometry()));
    }
    if (const auto* const parent = activeView(); parent != nullptr && parent->isVisible()) {
        opening.parent = areaOf(parent->frameGeometry());
    }
    return opening;
}

}  // namespace

void Desk::place(WindowView& view, QSize wanted) const {
    const auto others = openViews(view);
    const QMargins frame = expectedFrame(others);
    auto opening = openingOf(wanted, frame, others);
    const auto kept = memory_ != nullptr ? memory_->recall(view.objectName().toStdString(), signature()) : std::nullopt;
    if (kept) {
        opening.remembered = areaOf(rectOf(kept->area).marginsAdded(frame));
    }
    const Area place = controls::placeOf(opening);
    // Not move(): until the window has its frame, that would put what is inside it there, and the title above the
    // screen.
    view.setGeometry(rectOf(place).marginsRemoved(frame));
    if (kept && kept->maximized) {
        view.setWindowState(view.windowState() | Qt::WindowMaximized);
    }
}

void Desk::fit(WindowView& view, QSize wanted) const {
    if (view.isMaximized() || view.isFullScreen()) {
        return;
    }
    const QMargins frame = knownFrame(view);
    const QRect now = view.geometry().marginsAdded(frame);
    auto opening = openingOf(wanted, frame, {});
    opening.remembered = Area{now.left(), now.top(), opening.width, opening.height};
    const Area place = controls::placeOf(opening);
    if (place != areaOf(now)) {
        view.setGeometry(rectOf(place).marginsRemoved(frame));
    }
}

// Without its frame, whose size is not known when a window opens first.
void Desk::keep(const WindowView& view) const {
    if (memory_ == nullptr) {
        return;
    }
    const bool maximized = view.isMaximized() || view.isFullScreen();
    const QRect inner = maximized ? view.normalGeometry() : view.geometry();
    if (!inner.isEmpty()) {
        memory_->remember(view.objectName().toStdString(), {areaOf(inner), maximized}, signature());
    }
}

}  // namespace korvane::views
