#include "views/frame/Binder.h"

#include <algorithm>

namespace korvane::views {

Binder::Binder(controls::Window& window, QWidget& view, FrameClock& clock)
    : window_(window), view_(view), clock_(clock) {
    clock_.add(*this);
}

Binder::~Binder() {
    detach();
}

void Binder::bind(std::unique_ptr<BoundPart> part) {
    part->show();
    parts_.push_back(std::move(part));
}

void Binder::bind(std::unique_ptr<BoundPart> part, const std::vector<const controls::Control*>& controls,
                  QWidget& widget) {
    for (const auto* control : controls) {
        byControl_[control] = &widget;
    }
    bind(std::move(part));
}

void Binder::add(std::unique_ptr<Binding> binding) {
    byControl_[&binding->control()] = &binding->widget();
    bind(std::unique_ptr<BoundPart>(std::move(binding)));
}

void Binder::setTabOrder(const std::vector<controls::Control*>& controls) {
    QWidget* before = nullptr;
    for (const auto* control : controls) {
        QWidget* const widget = widgetOf(control);
        if (before != nullptr && widget != nullptr) {
            QWidget::setTabOrder(before, widget);
        }
        before = widget != nullptr ? widget : before;
    }
}

void Binder::setGuard(const controls::Control& control, std::function<bool()> guard) {
    guards_[&control] = std::move(guard);
}

bool Binder::lets(const controls::Control& control) const {
    const auto guard = guards_.find(&control);
    return guard == guards_.end() || guard->second();
}

QString Binder::hintOf(const controls::Control& control) const {
    return hints_ ? hints_(control) : QString();
}

QWidget* Binder::widgetOf(const controls::Control* control) const {
    const auto found = byControl_.find(control);
    return found != byControl_.end() ? found->second : nullptr;
}

// A window that is being destroyed has destroyed its controls before its observers are told.
void Binder::endVisit() {
    if (--visits_ == 0 && !attached_) {
        view_.deleteLater();
    }
}

void Binder::detach() {
    if (!attached_) {
        return;
    }
    attached_ = false;
    clock_.remove(*this);
    const ControlSet alive(window_.controls().begin(), window_.controls().end());
    for (const auto& part : parts_) {
        part->detach(alive);
    }
    byControl_.clear();
    marked_.clear();
}

void Binder::marked(BoundPart& part) {
    marked_.push_back(&part);
    wake();
}

void Binder::wake() {
    if (!marked_.empty() && view_.isVisible() && !view_.isMinimized()) {
        clock_.wake();
    }
}

void Binder::frame() {
    if (view_.isVisible() && !view_.isMinimized()) {
        showAll();
    }
}

// Changes that showing causes (a disabled widget passes the focus on, and a handler runs) are shown in the same frame.
void Binder::showAll() {
    if (showing_) {
        return;
    }
    showing_ = true;
    while (!marked_.empty()) {
        shown_.swap(marked_);
        for (auto* part : shown_) {
            part->show();
        }
        shown_.clear();
    }
    showing_ = false;
}

void Binder::showColorsAgain() {
    for (const auto& part : parts_) {
        part->showColorsAgain();
    }
}

void Binder::showFocus() {
    if (QWidget* const widget = widgetOf(window_.activeControl()); widget != nullptr) {
        showAll();
        widget->setFocus(Qt::OtherFocusReason);
    } else if (QWidget* const focused = view_.focusWidget(); focused != nullptr && window_.activeControl() == nullptr) {
        focused->clearFocus();
    }
}

void Binder::focusArrived(controls::Control& control) {
    window_.setFocus(&control);
}

QString captionText(const std::string& caption, char mnemonic) {
    QString text = QString::fromStdString(caption);
    const auto at = mnemonic != 0 ? text.indexOf(QLatin1Char(mnemonic), 0, Qt::CaseInsensitive) : -1;
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i == at) {
            result += u'&';
        }
        result += text[i];
        if (text[i] == u'&') {
            result += u'&';
        }
    }
    return result;
}

}  // namespace korvane::views
