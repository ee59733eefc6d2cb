#include "views/frame/WindowView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

#include <array>
#include <utility>

#include "views/frame/Desk.h"
#include "views/frame/HelpWindow.h"
#include "views/frame/Keys.h"
#include "views/frame/WindowGuide.h"
#include "views/widgets/Child.h"
#include "views/widgets/EdgeStyle.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {
constexpr int kTwipsPerPixel = 15;
constexpr QSize kLargest(8000, 8000);  // more than any display; a larger window exhausts the memory
// The grids of the map windows; Escape goes back to the first of them that can be seen.
constexpr std::array kGrids{"txtFuel", "txtIgn", "txtPWM", "txtInjAnalys"};
const QString kEscape = QStringLiteral("\x1b");

bool isCloseKey(const QKeyEvent& key) {
    return key.modifiers() == Qt::ControlModifier && (key.key() == Qt::Key_Q || key.key() == Qt::Key_W);
}
}  // namespace

WindowView::WindowView(controls::Window& window, FrameClock& clock) : window_(window), binder_(window, *this, clock) {
    const auto name = window.name();
    setObjectName(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    addKeys();
    window_.addObserver(*this);
}

WindowView::~WindowView() {
    detach();
}

void WindowView::open() {
    EdgeStyle::giveToBoxes(*this);
    showTitle();
    showColor();
    showSize();
    showVisible();
}

void WindowView::detach() {
    if (!binder_.isAttached()) {
        return;
    }
    binder_.detach();
    window_.removeObserver(*this);
    hide();
}

void WindowView::leave() {
    detach();
    if (!binder_.isVisiting()) {
        deleteLater();
    }
}

QPixmap WindowView::picture() {
    if (binder_.isAttached()) {
        binder_.showAll();
    }
    return grab();
}

void WindowView::propertyChanged(controls::Object&, const void* property) {
    if (property == &window_.Caption) {
        showTitle();
    } else if (property == &window_.BackColor) {
        showColor();
    } else if (property == &window_.Width || property == &window_.Height) {
        showSize();
    } else if (property == &window_.Visible) {
        showVisible();
    } else if (property == window_.shownProperty()) {
        raise();
        activateWindow();
    } else if (property == window_.focusProperty()) {
        showFocus();
    }
}

void WindowView::showTitle() {
    setWindowTitle(QString::fromStdString(titleOf(window_.name(), window_.Caption)));
    if (showCaption_) {
        showCaption_(QString::fromStdString(window_.Caption));
    }
}

void WindowView::onCaption(std::function<void(const QString&)> show) {
    showCaption_ = std::move(show);
}

// At once, not with the next frame: a window may flash for less than two frames.
void WindowView::showColor() {
    const bool usual = controls::isSystemColor(window_.BackColor);
    setOwnColor(*this, QPalette::Window, usual ? QColor() : colorOf(window_.BackColor, QPalette()));
}

QSize WindowView::modelSize() const {
    return QSize(window_.Width / kTwipsPerPixel, window_.Height / kTwipsPerPixel).boundedTo(kLargest);
}

// A window that fills the screen keeps doing so.
void WindowView::showSize() {
    if (!reporting_ && !modelSize().isEmpty() && modelSize() != size() && !isMaximized() && !isFullScreen()) {
        resize(modelSize());
    }
}

void WindowView::showVisible() {
    if (window_.Visible) {
        binder_.showAll();
    }
    setVisible(window_.Visible);
}

// A key that is sent to this window closes it and not the active one, whose shortcut it is too.
bool WindowView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && QApplication::activeWindow() != this &&
        isCloseKey(static_cast<const QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void WindowView::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!binder_.isAttached()) {
        event->accept();
        return;
    }
    const Binder::Visit visit(binder_);
    if (mayClose() && binder_.isAttached() && window_.unload()) {
        event->accept();
    }
}

void WindowView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    reportSize();
}

// Only what the window has made of both measures goes back to the display.
void WindowView::reportSize() {
    if (!binder_.isAttached() || size() == modelSize()) {
        return;
    }
    const Binder::Visit visit(binder_);
    reporting_ = true;
    window_.resize(width() * kTwipsPerPixel, height() * kTwipsPerPixel);
    reporting_ = false;
    if (binder_.isAttached()) {
        showSize();
    }
}

void WindowView::showEvent(QShowEvent* event) {
    if (binder_.isAttached()) {
        binder_.showAll();
    }
    QWidget::showEvent(event);
    if (!std::exchange(opened_, true)) {
        const QSize wanted = wantedSize();
        desk_ != nullptr ? desk_->place(*this, wanted) : resize(wanted);
    }
}

void WindowView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous() && desk_ != nullptr) {
        desk_->keep(*this);
    }
    if (help_ != nullptr) {
        help_->hide();
    }
}

void WindowView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        binder_.showColorsAgain();
    } else if (event->type() == QEvent::WindowStateChange) {
        binder_.wake();
    } else if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        activated();
    }
    QWidget::changeEvent(event);
}

void WindowView::showFocus() {
    if (auto* const widget = binder_.widgetOf(window_.activeControl()); widget != nullptr) {
        focusMoved(*widget);
    }
    binder_.showFocus();
}

// The first window's frame is known only now.
void WindowView::activated() {
    if (!std::exchange(activated_, true) && desk_ != nullptr && opened_) {
        desk_->fit(*this, size());
    }
}

// A control with the focus has passed the key to the window already.
void WindowView::keyPressEvent(QKeyEvent* event) {
    if (isCloseKey(*event)) {
        close();
        return;
    }
    const auto* const active = binder_.isAttached() ? binder_.widgetOf(window_.activeControl()) : nullptr;
    if (binder_.isAttached() && (active == nullptr || active != focusWidget())) {
        const Binder::Visit visit(binder_);
        if (window_.offerKey(keyCodeOf(*event), shiftOf(*event))) {
            return;
        }
        window_.enter(window_.name(), [&] { window_.Form_KeyDown(keyCodeOf(*event), shiftOf(*event)); });
    }
    QWidget::keyPressEvent(event);
}

// As shortcuts they act whatever the control with the focus makes of them.
void WindowView::addKeys() {
    QWidget* const self = this;
    for (const auto key : {Qt::Key_Q, Qt::Key_W}) {
        auto& shortcut = child<QShortcut>(self, QKeySequence(Qt::CTRL | key));
        connect(&shortcut, &QShortcut::activated, this, [this] { close(); });
    }
    addKey(Qt::Key_F1, {}, &WindowView::showHelp);
    addKey(Qt::Key_F5, {}, &WindowView::readWindow);
    addKey(Qt::Key_Escape, kEscape, &WindowView::escape);
}

// The control with the focus gets the key before, as it gets any key, and may close the window by it.
void WindowView::addKey(Qt::Key key, const QString& text, void (WindowView::*action)()) {
    auto& shortcut = child<QShortcut>(static_cast<QWidget*>(this), QKeySequence(key));
    shortcut.setAutoRepeat(false);
    keys_.push_back(&shortcut);
    connect(&shortcut, &QShortcut::activated, this, [this, key, text, action] {
        const Binder::Visit visit(binder_);
        sendToFocus(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
        if (binder_.isAttached()) {
            (this->*action)();
        }
    });
}

// Not as a shortcut once more.
void WindowView::sendToFocus(QKeyEvent&& key) {
    const auto enable = [this](bool enabled) {
        for (auto* shortcut : keys_) {
            shortcut->setEnabled(enabled);
        }
    };
    enable(false);
    QApplication::sendEvent(focusWidget() != nullptr ? focusWidget() : this, &key);
    enable(true);
}

void WindowView::showHelp() {
    const auto* const guide = guideOf(window_.name());
    if (guide == nullptr) {
        return;
    }
    if (help_ == nullptr) {
        help_ = &child<HelpWindow>(static_cast<QWidget*>(this), *guide);
    }
    help_->setWindowTitle(QStringLiteral("Help: %1").arg(windowTitle()));
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void WindowView::readWindow() {
    binder_.act([this] { readAgain(window_); });
}

void WindowView::escape() {
    const auto* const guide = guideOf(window_.name());
    if (guide == nullptr || guide->escape == EscapeKey::Nothing) {
        return;
    }
    guide->escape == EscapeKey::ClosesWindow ? static_cast<void>(close()) : goBackToMap();
}

// The grid gets the key then: it ends the selection.
void WindowView::goBackToMap() {
    QWidget* first = nullptr;
    for (const auto* name : kGrids) {
        auto* const grid = findChild<QWidget*>(QLatin1String(name));
        if (grid != nullptr && grid->isVisible() && grid->hasFocus()) {
            return;
        }
        first = first == nullptr && grid != nullptr && grid->isVisible() ? grid : first;
    }
    if (first != nullptr) {
        first->setFocus(Qt::ShortcutFocusReason);
        sendToFocus(QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, kEscape));
    }
}

}  // namespace korvane::views
