#include "views/frame/WindowView.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include "views/frame/Keys.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {
constexpr int kTwipsPerPixel = 15;
constexpr QSize kLargest(8000, 8000);  // more than any display; a larger window exhausts the memory
}  // namespace

WindowView::WindowView(controls::Window& window, FrameClock& clock) : window_(window), binder_(window, *this, clock) {
    const auto name = window.name();
    setObjectName(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    window_.addObserver(*this);
}

WindowView::~WindowView() {
    detach();
}

// A window larger than the screen would have its lower buttons out of reach.
void WindowView::open() {
    showTitle();
    showColor();
    showSize();
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) {
        resize(size().boundedTo(screen()->availableSize()));
    }
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
        binder_.showFocus();
    }
}

void WindowView::showTitle() {
    setWindowTitle(QString::fromStdString(window_.Caption));
}

// At once, not with the next frame: a window may flash for less than two frames.
void WindowView::showColor() {
    QPalette palette;
    palette.setResolveMask(0);
    if (!controls::isSystemColor(window_.BackColor)) {
        palette.setColor(QPalette::Window, colorOf(window_.BackColor, palette));
    }
    setPalette(palette);
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
}

void WindowView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        binder_.showColorsAgain();
    } else if (event->type() == QEvent::WindowStateChange) {
        binder_.wake();
    }
    QWidget::changeEvent(event);
}

// A control with the focus has passed the key to the window already.
void WindowView::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::ControlModifier && (event->key() == Qt::Key_Q || event->key() == Qt::Key_W)) {
        close();
        return;
    }
    const auto* const active = binder_.isAttached() ? binder_.widgetOf(window_.activeControl()) : nullptr;
    if (binder_.isAttached() && (active == nullptr || active != focusWidget())) {
        const Binder::Visit visit(binder_);
        window_.enter(window_.name(), [&] { window_.Form_KeyDown(keyCodeOf(*event), shiftOf(*event)); });
    }
    QWidget::keyPressEvent(event);
}

}  // namespace korvane::views
