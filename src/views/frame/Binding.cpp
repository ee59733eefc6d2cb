#include "views/frame/Binding.h"

#include <QFontInfo>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

#include "controls/Controls.h"
#include "views/frame/Binder.h"
#include "views/frame/Keys.h"
#include "views/widgets/Palette.h"

namespace korvane::views {

namespace {

constexpr int kTwipsPerPixel = 15;
// A control further left than this (twips) counts as hidden: pages and panes are hidden by moving them away.
constexpr int kOutOfView = -3000;
constexpr int kUsualFontSize = 8;  // points, of all controls by design
constexpr double kLegible = 4.5;   // the least contrast for a text of usual size

}  // namespace

Binding::Binding(Binder& binder, controls::Control& control, QWidget& widget)
    : binder_(binder), control_(control), widget_(widget) {
    widget_.setObjectName(QString::fromStdString(control.path()));
    widget_.installEventFilter(this);
    control_.addObserver(*this);
}

void Binding::detach(const ControlSet& alive) {
    widget_.removeEventFilter(this);
    if (alive.contains(&control_)) {
        control_.removeObserver(*this);
    }
}

void Binding::show() {
    waiting_ = false;
    if (commonChanged_) {
        commonChanged_ = false;
        showCommon();
    }
    if (contentChanged_) {
        contentChanged_ = false;
        showContent();
    }
}

void Binding::showColorsAgain() {
    showColors();
}

void Binding::propertyChanged(controls::Object&, const void* property) {
    (isCommon(property) ? commonChanged_ : contentChanged_) = true;
    if (!waiting_) {
        waiting_ = true;
        binder_.marked(*this);
    }
}

bool Binding::isCommon(const void* property) const {
    return property == &control_.Enabled || property == &control_.Visible || property == &control_.Left ||
           property == &control_.BackColor || property == &control_.ForeColor || property == &control_.ToolTipText ||
           property == &control_.Tag || property == &control_.FontBold || property == &control_.FontSize;
}

void Binding::showCommon() {
    widget_.setEnabled(control_.Enabled);
    widget_.setVisible(control_.Visible && control_.Left >= kOutOfView);
    widget_.setToolTip(toolTip());
    showFont();
    showColors();
}

QString Binding::toolTip() const {
    return joined(QString::fromStdString(control_.ToolTipText), binder_.hintOf(control_));
}

QString Binding::joined(const QString& first, const QString& second) {
    return first.isEmpty() ? second : second.isEmpty() ? first : first + u'\n' + second;
}

void Binding::press() {
    const Binder::Visit visit(binder_);
    if (!binder_.isAttached() || !binder_.lets(control_)) {
        return;
    }
    act([this] {
        if (control_.canFocus()) {
            control_.window().setFocus(&control_);
        }
        if (control_.usable()) {
            control_.press();
        }
    });
}

// A control with another font size keeps its proportion to the texts around it.
void Binding::showFont() {
    const bool usual = !control_.FontBold && control_.FontSize == kUsualFontSize;
    if (usual && !widget_.testAttribute(Qt::WA_SetFont)) {
        return;
    }
    QFont font;
    font.setResolveMask(0);
    if (control_.FontBold) {
        font.setBold(true);
    }
    if (control_.FontSize != kUsualFontSize) {
        const QFont around = widget_.parentWidget() != nullptr ? widget_.parentWidget()->font() : QFont();
        font.setPixelSize(std::max(QFontInfo(around).pixelSize() * control_.FontSize / kUsualFontSize, 1));
    }
    widget_.setFont(font);
}

void Binding::showColors() {
    const Roles where = roles();
    const bool usualBack = control_.BackColor == where.usualBack;
    const bool usualFore = control_.ForeColor == where.usualFore;
    if (usualBack && usualFore && !widget_.testAttribute(Qt::WA_SetPalette)) {
        return;
    }
    QPalette palette;
    palette.setResolveMask(0);
    if (!usualBack) {
        palette.setColor(where.back, colorOf(control_.BackColor, QPalette()));
    }
    if (!usualFore) {
        palette.setColor(where.fore, colorOf(control_.ForeColor, QPalette()));
    } else if (!usualBack && !controls::isSystemColor(control_.BackColor)) {
        palette.setColor(where.fore, visibleOn(palette.color(where.back), QPalette().color(where.fore), kLegible));
    }
    widget_.setPalette(palette);
    widget_.setAutoFillBackground(!usualBack && where.back == QPalette::Window);
    if (widget_.autoFillBackground()) {
        widget_.setBackgroundRole(where.back);
    }
}

bool Binding::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &widget_ || !binder_.isAttached()) {
        return false;
    }
    switch (event->type()) {
        case QEvent::FocusIn:
            act([this] { binder_.focusArrived(control_); });
            return false;
        case QEvent::KeyPress:
            return control_.canFocus() && keyPressed(static_cast<QKeyEvent&>(*event));
        case QEvent::KeyRelease:
            if (control_.canFocus()) {
                keyReleased(static_cast<const QKeyEvent&>(*event));
            }
            return false;
        case QEvent::MouseButtonRelease:
            mouseReleased(static_cast<const QMouseEvent&>(*event));
            return false;
        default:
            return false;
    }
}

bool Binding::keyPressed(QKeyEvent& event) {
    bool passed = true;
    act([&] { passed = control_.keyDown(keyCodeOf(event), shiftOf(event)); });
    if (!binder_.isAttached() || !passed) {
        return true;
    }
    return characterOf(event) != 0 && characterTyped(event);
}

bool Binding::characterTyped(QKeyEvent& event) {
    bool dropped = false;
    act([&] { dropped = control_.keyPress(characterOf(event)) == 0; });
    return dropped || !binder_.isAttached();
}

void Binding::keyReleased(const QKeyEvent& event) {
    if (!event.isAutoRepeat()) {
        act([&] { control_.keyUp(keyCodeOf(event), shiftOf(event)); });
    }
}

void Binding::mouseReleased(const QMouseEvent& event) {
    if (control_.MouseUp) {
        act([&] {
            control_.mouseUp(buttonNumber(event.button()), shiftOf(event.modifiers()),
                             event.position().x() * kTwipsPerPixel, event.position().y() * kTwipsPerPixel);
        });
    }
    const bool inside = widget_.rect().contains(event.position().toPoint());
    if (binder_.isAttached() && inside && event.button() == Qt::LeftButton && !control_.canFocus() &&
        control_.canClick() && control_.usable()) {
        act([this] { control_.press(); });
    }
}

}  // namespace korvane::views
